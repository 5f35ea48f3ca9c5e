// Output that cannot drive the terminal: control characters that come from
// the database or from typed input (ESC, BEL, NUL, the C1 controls) are
// written as visible escapes (\x1b, \u009b), never raw. Line ends pass.
//
//   SafeOutput safe(std::cout);   // every later write to std::cout is escaped
#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace varnel::app {

// Text with every control character except the line end escaped.
std::string Escaped(std::string_view text);

// Escapes everything written to a stream for as long as it lives.
class SafeOutput : private std::streambuf {
 public:
  explicit SafeOutput(std::ostream& stream);
  ~SafeOutput() override;
  SafeOutput(const SafeOutput&) = delete;
  SafeOutput& operator=(const SafeOutput&) = delete;

 private:
  int_type overflow(int_type c) override;
  int sync() override;
  void Put(std::string_view text);

  std::ostream& stream_;
  std::streambuf* target_;
  bool lead_c2_ = false;  // the previous byte began a two-byte sequence (a C1 control?)
};

}  // namespace varnel::app
