// Format: a value written with a date pattern, a number pattern or one of the
// platform's named formats.
#include <cctype>

#include "automation/calendar.h"
#include "automation/format_rules.h"
#include "automation/numeric_text.h"
#include "automation/value_rules.h"

namespace varnel {

namespace internal {

size_t CopyLiteral(std::string_view pattern, size_t pos, std::string& out) {
  if (pattern[pos] == '\\') {
    if (pos + 1 < pattern.size()) {
      out.push_back(pattern[pos + 1]);
      return 2;
    }
    return 1;
  }
  size_t close = pattern.find('"', pos + 1);
  size_t end = close == std::string_view::npos ? pattern.size() : close;
  out.append(pattern.substr(pos + 1, end - pos - 1));
  return (close == std::string_view::npos ? end : close + 1) - pos;
}

bool IsDatePattern(std::string_view pattern) {
  std::string ignored;
  for (size_t pos = 0; pos < pattern.size();) {
    if (pattern[pos] == '"' || pattern[pos] == '\\') {
      pos += CopyLiteral(pattern, pos, ignored);
      continue;
    }
    switch (std::tolower(static_cast<unsigned char>(pattern[pos]))) {
      case 'y':
      case 'm':
      case 'd':
      case 'h':
      case 'n':
      case 's':
        return true;
    }
    ++pos;
  }
  return false;
}

}  // namespace internal

namespace {

struct NamedFormat {
  const char* name;
  const char* pattern;
};

// The platform's named formats (United States settings).
constexpr NamedFormat kNamedFormats[] = {
    {"currency", "$#,##0.00;($#,##0.00)"},
    {"fixed", "0.00"},
    {"standard", "#,##0.00"},
    {"percent", "0.00%"},
    {"scientific", "0.00E+00"},
    {"long date", "dddd, mmmm d, yyyy"},
    {"medium date", "dd-mmm-yy"},
    {"short date", "m/d/yyyy"},
    {"long time", "h:nn:ss AM/PM"},
    {"medium time", "hh:nn AM/PM"},
    {"short time", "hh:nn"},
};

std::string Lowered(std::string_view text) {
  std::string out;
  for (char c : text) {
    out.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
  }
  return out;
}

// Yes/No, True/False, On/Off and the general forms; nullopt for other names.
std::optional<std::string> FormatByWord(const Variant& value, const std::string& name) {
  bool plain_text = value.IsString() && !IsNumeric(value);
  if (name == "general date") {
    return plain_text && !internal::ParseDateText(value.StringView())
               ? value.ToString()
               : internal::DateText(CDate(value));
  }
  if (plain_text) {
    return std::nullopt;  // text that is no number is written as it is
  }
  if (name == "general number") {
    const bool exact = value.VarType() == vbLongLong || value.VarType() == vbDecimal;
    return exact ? CStr(value) : CStr(value.ToDouble());  // every digit of the exact kinds
  }
  const char* words[][3] = {
      {"yes/no", "Yes", "No"}, {"true/false", "True", "False"}, {"on/off", "On", "Off"}};
  for (const auto& word : words) {
    if (name == word[0]) {
      return value.ToDouble() != 0 ? word[1] : word[2];
    }
  }
  return std::nullopt;
}

// The date a value stands for under a date pattern; nullopt for text that
// is neither a date nor a number.
std::optional<Date> DateOf(const Variant& value) {
  if (value.IsString()) {
    if (std::optional<Date> date = internal::ParseDateText(value.StringView())) {
      return date;
    }
    if (!IsNumeric(value)) {
      return std::nullopt;
    }
  }
  return value.ToDate();
}

}  // namespace

std::string Format(const Variant& Value, const std::string& Pattern) {
  if (Value.IsBlank()) {
    return std::string();
  }
  std::string name = Lowered(Pattern);
  if (std::optional<std::string> text = FormatByWord(Value, name)) {
    return *text;
  }
  std::string_view pattern = Pattern;
  for (const NamedFormat& named : kNamedFormats) {
    if (name == named.name) {
      pattern = named.pattern;
    }
  }
  if (pattern.empty()) {
    return Value.ToString();
  }
  if (internal::IsDatePattern(pattern)) {
    std::optional<Date> date = DateOf(Value);
    return date ? internal::FormatDatePattern(*date, pattern) : Value.ToString();
  }
  if (Value.IsString() && !IsNumeric(Value)) {
    return Value.ToString();
  }
  return internal::FormatNumberPattern(Value, pattern);
}

}  // namespace varnel
