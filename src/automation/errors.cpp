// Run-time errors with the platform's numbers and standard descriptions.
#include <iterator>

#include "varnel/errors.h"
#include "varnel/variant.h"

namespace varnel {

namespace {

struct ErrorText {
  int32_t number;
  const char* description;
};

// The descriptions the platform gives its run-time errors (English).
constexpr ErrorText kErrorTexts[] = {
    {3, "Return without GoSub"},
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {10, "This array is fixed or temporarily locked"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {14, "Out of string space"},
    {28, "Out of stack space"},
    {91, "Object variable or With block variable not set"},
    {92, "For loop not initialized"},
    {93, "Invalid pattern string"},
    {94, "Invalid use of Null"},
    {380, "Invalid property value"},
    {424, "Object required"},
    {438, "Object doesn't support this property or method"},
    {440, "Automation error"},
    {449, "Argument not optional"},
    {457, "This key is already associated with an element of this collection"},
    {2103, "No current record"},
    {3001,
     "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one "
     "another."},
    {3021,
     "Either BOF or EOF is True, or the current record has been deleted. Requested operation "
     "requires a current record."},
    {3265, "Item cannot be found in the collection corresponding to the requested name or ordinal."},
    {3704, "Operation is not allowed when the object is closed."},
    {3705, "Operation is not allowed when the object is open."},
    {3706, "Provider cannot be found. It may not be properly installed."},
    {-2147217864, "Row cannot be located for updating. Some values may have been changed since it "
                  "was last read."},
    {-2147467259, "Unspecified error"},
};

// The platform's text for a number it has no description of.
constexpr const char* kUndefinedError = "Application-defined or object-defined error";

}  // namespace

std::string ErrorDescription(int32_t number) {
  for (const ErrorText& entry : kErrorTexts) {
    if (entry.number == number) {
      return entry.description;
    }
  }
  return kUndefinedError;
}

VbError::VbError(int32_t Number, std::string Description)
    : std::runtime_error(Description), number_(Number), description_(std::move(Description)) {}

void RaiseError(int32_t Number) { throw VbError(Number, ErrorDescription(Number)); }

}  // namespace varnel
