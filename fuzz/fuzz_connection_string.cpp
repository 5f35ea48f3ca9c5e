// Fuzzes the parsing of connection strings: any text either parses or raises
// the provider's VbError, a parsed key is found in any letter case, and the
// dialect of any text can be asked without an error.
#include <cstddef>
#include <cstdint>
#include <string>

#include "db/connection_string.h"
#include "db/dialect.h"
#include "fuzz_input.h"
#include "varnel/variant.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnel::fuzzing::FuzzInput input(data, size);
  const std::string text = input.Rest();
  (void)varnel::db::internal::DialectOf(text);
  try {
    const auto settings = varnel::db::internal::ConnectionSettings::Parse(text);
    // Every key written before an '=' is found again, whatever its case.
    const size_t equals = text.find('=');
    const size_t start =
        text.rfind(';', equals) == std::string::npos ? 0 : text.rfind(';', equals) + 1;
    if (equals != std::string::npos && equals > start) {
      std::string key = text.substr(start, equals - start);
      const size_t first = key.find_first_not_of(" \t\r\n\f\v");
      if (first != std::string::npos) {
        key = key.substr(first, key.find_last_not_of(" \t\r\n\f\v") - first + 1);
        std::string upper = key;
        for (char& c : upper) {
          c = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
        }
        if (!settings.Get(key) || settings.Get(key) != settings.Get(upper)) {
          varnel::fuzzing::Violated("a parsed key is not found in any case", text);
        }
      }
    }
  } catch (const varnel::VbError& error) {
    if (error.Number() != -2147467259) {
      varnel::fuzzing::Violated("a connection string failed with another error", text);
    }
  }
  return 0;
}
