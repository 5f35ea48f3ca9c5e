// The sample database that varnel opens when it is given no other: an Orders
// table of a few hundred believable rows and the field-information table that
// describes its screen, the view "Orders".
#pragma once

#include <filesystem>
#include <string>

namespace varnel::app {

inline constexpr const char* kSampleView = "Orders";
inline constexpr const char* kSampleFieldsTable = "FieldsInformation";
inline constexpr int kSampleRows = 300;

// "Provider=SQLite;Data Source=<path>"; with Create, the string that makes
// the file when it does not exist yet.
std::string SqliteConnectionString(const std::filesystem::path& path, bool create = false);

// Creates the sample database at Path (its directory too) unless a file is
// already there; returns true when it created it. Raises VbError when the
// database refuses, and leaves no half-made file behind.
bool EnsureSampleDatabase(const std::filesystem::path& path);

}  // namespace varnel::app
