#include "compute/operators.h"

namespace varnel::internal {
namespace {

// Rows: the operator on top of the stack; columns: the incoming operator; both
// in the order of kOperatorChars. "&" binds like "+" and "-", and all five
// binary operators are left-associative.
constexpr std::string_view kRelations[8] = {
    //         & + - * / ( ) #
    ">>><<<>>",  // &
    ">>><<<>>",  // +
    ">>><<<>>",  // -
    ">>>>><>>",  // *
    ">>>>><>>",  // /
    "<<<<<<=E",  // (
    ">>>>>E>>",  // )
    "<<<<<<E=",  // #
};

constexpr Relation FromSymbol(char symbol) {
  switch (symbol) {
    case '<':
      return Relation::Lower;
    case '=':
      return Relation::Same;
    case '>':
      return Relation::Higher;
    default:
      return Relation::None;
  }
}

constexpr int kNotAnOperator = -1;

// Each byte's position in kOperatorChars, so that a step costs two lookups.
struct OperatorIndex {
  int8_t position[256];
  constexpr OperatorIndex() : position() {
    for (int8_t& p : position) {
      p = kNotAnOperator;
    }
    for (size_t i = 0; i < kOperatorChars.size(); ++i) {
      position[static_cast<unsigned char>(kOperatorChars[i])] = static_cast<int8_t>(i);
    }
  }
  int operator[](char c) const { return position[static_cast<unsigned char>(c)]; }
};

constexpr OperatorIndex kOperatorIndex;

}  // namespace

Relation Precede(char top, char incoming) {
  const int row = kOperatorIndex[top];
  const int column = kOperatorIndex[incoming];
  if (row == kNotAnOperator || column == kNotAnOperator) {
    return Relation::None;
  }
  return FromSymbol(kRelations[row][column]);
}

Variant ApplyOperator(const Variant& a, char theta, const Variant& b) {
  const bool a_missing = a.IsBlank();
  const bool b_missing = b.IsBlank();
  switch (theta) {
    case '&':
      return Concat(a, b);
    case '+':
    case '-':
      if (a_missing && b_missing) {
        return Variant::Null();
      }
      if (a_missing) {
        return b;  // B itself, not its negation: a leading "-" is no sign
      }
      if (b_missing) {
        return a;
      }
      return theta == '+' ? a + b : a - b;
    case '*':
    case '/':
      if (a_missing || b_missing) {
        return Variant::Null();
      }
      return theta == '*' ? a * b : a / b;
    default:
      return Variant();
  }
}

}  // namespace varnel::internal
