#include "db/filter_parser.h"

#include <cctype>
#include <utility>

#include "automation/decimal_math.h"
#include "automation/numeric_text.h"

namespace varnel::db::internal {

void FilterContext::Fail(size_t position, std::string what) {
  if (!error_) {
    error_ = Error{position, std::move(what)};
  }
}

std::string FilterContext::Describe() const {
  return what() + " at position " + std::to_string(position() + 1) + " of the filter \"" +
         std::string(text_) + "\"";
}

namespace {

enum class TokenKind { End, Word, Field, Text, Date, Number, Operator, Open, Close };

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;  // the word, the field name, the text, the date or number text, the operator
  size_t position = 0;
};

bool IsWordChar(char c) {
  const auto u = static_cast<unsigned char>(c);
  return std::isalnum(u) != 0 || c == '_' || u >= 0x80;
}

bool IsKeyword(const Token& token, std::string_view keyword) {
  if (token.kind != TokenKind::Word || token.text.size() != keyword.size()) {
    return false;
  }
  for (size_t i = 0; i < keyword.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(token.text[i])) != keyword[i]) {
      return false;
    }
  }
  return true;
}

class FilterParser {
 public:
  FilterParser(std::string_view text, FilterContext& context) : text_(text), context_(context) {}

  std::optional<FilterExpr> Parse() {
    Advance();
    std::optional<FilterExpr> expr = ParseOr();
    if (expr && token_.kind != TokenKind::End) {
      Fail(token_.position, "expected AND or OR instead of '" + token_.text + "'");
    }
    return context_.failed() ? std::nullopt : std::move(expr);
  }

 private:
  void Fail(size_t position, std::string what) { context_.Fail(position, std::move(what)); }

  std::optional<FilterExpr> ParseOr() { return ParseChain(FilterExpr::Kind::Or, "OR"); }
  std::optional<FilterExpr> ParseAnd() { return ParseChain(FilterExpr::Kind::And, "AND"); }

  // Operand (Keyword Operand)*: the OR chain's operands are AND chains, whose
  // operands are terms or groups.
  std::optional<FilterExpr> ParseChain(FilterExpr::Kind kind, std::string_view keyword) {
    auto operand = [&] { return kind == FilterExpr::Kind::Or ? ParseAnd() : ParsePrimary(); };
    std::optional<FilterExpr> first = operand();
    if (!first || !IsKeyword(token_, keyword)) {
      return first;
    }
    FilterExpr chain;
    chain.kind = kind;
    chain.operands.push_back(std::move(*first));
    while (IsKeyword(token_, keyword)) {
      Advance();
      std::optional<FilterExpr> next = operand();
      if (!next) {
        return std::nullopt;
      }
      chain.operands.push_back(std::move(*next));
    }
    return chain;
  }

  std::optional<FilterExpr> ParsePrimary() {
    if (token_.kind != TokenKind::Open) {
      return ParseTerm();
    }
    const size_t open = token_.position;
    if (++depth_ > kMaxDepth) {
      Fail(open, "parentheses nest too deeply");
      return std::nullopt;
    }
    Advance();
    std::optional<FilterExpr> inner = ParseOr();
    --depth_;
    if (!inner) {
      return std::nullopt;
    }
    if (token_.kind != TokenKind::Close) {
      Fail(token_.kind == TokenKind::End ? open : token_.position,
           token_.kind == TokenKind::End ? "'(' is not closed" : "expected ')'");
      return std::nullopt;
    }
    Advance();
    return inner;
  }

  std::optional<FilterExpr> ParseTerm() {
    FilterExpr expr;
    if (token_.kind == TokenKind::Field ||
        (token_.kind == TokenKind::Word && !IsKeyword(token_, "AND") && !IsKeyword(token_, "OR"))) {
      expr.term.field = token_.text;
      expr.term.field_position = token_.position;
    } else {
      Fail(token_.position, "expected a field name");
      return std::nullopt;
    }
    Advance();
    if (!ParseOperator(expr.term)) {
      return std::nullopt;
    }
    const std::string op = token_.text;
    Advance();
    if (!ParseValue(expr.term, op)) {
      return std::nullopt;
    }
    Advance();
    return expr;
  }

  bool ParseOperator(FilterTerm& term) {
    static const std::pair<const char*, FilterOp> kOperators[] = {
        {"<", FilterOp::Less},          {">", FilterOp::Greater},   {"<=", FilterOp::LessEqual},
        {">=", FilterOp::GreaterEqual}, {"<>", FilterOp::NotEqual}, {"=", FilterOp::Equal},
    };
    if (IsKeyword(token_, "LIKE")) {
      term.op = FilterOp::Like;
      return true;
    }
    if (token_.kind == TokenKind::Operator) {
      for (const auto& [text, op] : kOperators) {
        if (token_.text == text) {
          term.op = op;
          return true;
        }
      }
    }
    Fail(token_.position, "expected a comparison operator (< > <= >= <> = LIKE) after the field '" +
                              term.field + "'");
    return false;
  }

  bool ParseValue(FilterTerm& term, const std::string& op) {
    term.value_position = token_.position;
    switch (token_.kind) {
      case TokenKind::Text:
        term.value = Variant(token_.text);
        return term.op != FilterOp::Like || CheckPattern(token_.text);
      case TokenKind::Date:
        return ParseDate(term);
      case TokenKind::Number:
        return ParseNumber(term);
      case TokenKind::Word:
        return ParseWordValue(term);
      default:
        Fail(token_.position,
             "expected a value (text in '...', a date in #...# or a number) "
             "after '" +
                 op + "'");
        return false;
    }
  }

  bool ParseWordValue(FilterTerm& term) {
    if (IsKeyword(token_, "NULL")) {
      if (term.op != FilterOp::Equal && term.op != FilterOp::NotEqual) {
        Fail(token_.position, "NULL can be compared only with = or <>");
        return false;
      }
      term.value = Variant::Null();
      return true;
    }
    if (IsKeyword(token_, "TRUE") || IsKeyword(token_, "FALSE")) {
      term.value = Variant(IsKeyword(token_, "TRUE"));
      return term.op != FilterOp::Like || NeedText();
    }
    Fail(token_.position, "'" + token_.text + "' is not a value; write text in '...'");
    return false;
  }

  bool ParseDate(FilterTerm& term) {
    try {
      term.value = Variant(CDate(Variant(token_.text)));
    } catch (const VbError&) {
      Fail(token_.position, "'" + token_.text + "' is not a date");
      return false;
    }
    return term.op != FilterOp::Like || NeedText();
  }

  bool ParseNumber(FilterTerm& term) {
    if (std::optional<Variant> exact = varnel::internal::ExactNumberOfText(token_.text)) {
      term.value = *exact;  // every digit: a 19-digit key must not match its neighbour
      return term.op != FilterOp::Like || NeedText();
    }
    const std::optional<double> number = varnel::internal::ParseNumber(token_.text);
    if (!number) {
      Fail(token_.position, "'" + token_.text + "' is not a number");
      return false;
    }
    term.value = Variant(*number);
    return term.op != FilterOp::Like || NeedText();
  }

  bool NeedText() {
    Fail(token_.position, "LIKE needs a text value in '...'");
    return false;
  }

  // A LIKE pattern may hold its wildcards only at its ends.
  bool CheckPattern(std::string_view pattern) {
    if (pattern.size() > 2 &&
        pattern.substr(1, pattern.size() - 2).find_first_of("*%") != std::string_view::npos) {
      Fail(token_.position, "LIKE takes the wildcard * or % only at the start or the end");
      return false;
    }
    return true;
  }

  void Advance();
  void ScanQuoted(char close, TokenKind kind, const char* what);

  std::string_view text_;
  FilterContext& context_;
  size_t pos_ = 0;
  Token token_;
  static constexpr int kMaxDepth = 100;
  int depth_ = 0;
};

// Reads text up to the closing character; in '...' a doubled quote is one.
void FilterParser::ScanQuoted(char close, TokenKind kind, const char* what) {
  const size_t start = pos_++;
  std::string value;
  while (pos_ < text_.size()) {
    const char c = text_[pos_++];
    if (c != close) {
      value += c;
    } else if (close == '\'' && pos_ < text_.size() && text_[pos_] == '\'') {
      value += c;
      ++pos_;
    } else {
      token_ = Token{kind, std::move(value), start};
      return;
    }
  }
  Fail(start, std::string(what) + " is not closed");
  token_ = Token{TokenKind::End, "", text_.size()};
}

void FilterParser::Advance() {
  while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_]))) {
    ++pos_;
  }
  if (pos_ >= text_.size()) {
    token_ = Token{TokenKind::End, "end of the filter", text_.size()};
    return;
  }
  const size_t start = pos_;
  const char c = text_[pos_];
  const auto next_is_digit = [&](size_t at) {
    return at < text_.size() &&
           (std::isdigit(static_cast<unsigned char>(text_[at])) != 0 || text_[at] == '.');
  };
  if (c == '\'') {
    return ScanQuoted('\'', TokenKind::Text, "the text in '...'");
  }
  if (c == '#') {
    return ScanQuoted('#', TokenKind::Date, "the date in #...#");
  }
  if (c == '[') {
    return ScanQuoted(']', TokenKind::Field, "the field name in [...]");
  }
  if (c == '(' || c == ')') {
    ++pos_;
    token_ = Token{c == '(' ? TokenKind::Open : TokenKind::Close, std::string(1, c), start};
    return;
  }
  if (c == '<' || c == '>' || c == '=') {
    ++pos_;
    if (pos_ < text_.size() && (text_[pos_] == '=' || (c == '<' && text_[pos_] == '>'))) {
      ++pos_;
    }
    token_ = Token{TokenKind::Operator, std::string(text_.substr(start, pos_ - start)), start};
    return;
  }
  if (next_is_digit(pos_) || ((c == '-' || c == '+') && next_is_digit(pos_ + 1))) {
    ++pos_;
    while (pos_ < text_.size() && (IsWordChar(text_[pos_]) || text_[pos_] == '.' ||
                                   ((text_[pos_] == '-' || text_[pos_] == '+') &&
                                    (text_[pos_ - 1] == 'e' || text_[pos_ - 1] == 'E')))) {
      ++pos_;
    }
    token_ = Token{TokenKind::Number, std::string(text_.substr(start, pos_ - start)), start};
    return;
  }
  if (IsWordChar(c)) {
    while (pos_ < text_.size() && IsWordChar(text_[pos_])) {
      ++pos_;
    }
    token_ = Token{TokenKind::Word, std::string(text_.substr(start, pos_ - start)), start};
    return;
  }
  Fail(start, std::string("unexpected character '") + c + "'");
  token_ = Token{TokenKind::End, "", text_.size()};
}

}  // namespace

std::optional<FilterExpr> ParseFilter(std::string_view text, FilterContext& context) {
  return FilterParser(text, context).Parse();
}

}  // namespace varnel::db::internal
