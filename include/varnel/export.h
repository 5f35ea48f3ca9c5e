/// \file
/// The library's export markers. A shared libvarnel is built with every symbol
/// hidden; each public header wraps its declarations in VARNEL_API_BEGIN and
/// VARNEL_API_END, so exactly the public interface is exported. Clients need
/// nothing from this header.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
/// Opens a region of public declarations, exported from a shared library.
#define VARNEL_API_BEGIN _Pragma("GCC visibility push(default)")
/// Closes the region that VARNEL_API_BEGIN opened.
#define VARNEL_API_END _Pragma("GCC visibility pop")
/// Exports one declaration outside such a region.
#define VARNEL_EXPORT __attribute__((visibility("default")))
#else
#define VARNEL_API_BEGIN
#define VARNEL_API_END
#define VARNEL_EXPORT
#endif
