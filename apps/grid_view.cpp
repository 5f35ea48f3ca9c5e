#include "grid_view.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "form_view.h"
#include "text_width.h"
#include "value_text.h"

namespace varnel::app {
namespace {

constexpr size_t kMaxColumnWidth = 22;
constexpr size_t kMinColumnWidth = 3;
constexpr size_t kMarksWidth = 3;

bool RightAligned(const ClsFields& field) {
  return field.FieldType == F_Numeral || field.FieldType == F_Currency ||
         field.FieldType == F_AutoCoding;
}

std::string Marks(ClsRecordset& rs, int32_t row, int32_t current) {
  std::string marks;
  marks += row == current ? '>' : ' ';
  marks += rs.SelectState() == S_Multi && rs.GetSelectRow(row) ? '+' : ' ';
  marks += rs.GetEdit(row) ? ' ' : '#';
  return marks;
}

std::string TrimRight(const std::string& line) {
  const size_t end = line.find_last_not_of(' ');
  return line.substr(0, end == std::string::npos ? 0 : end + 1);
}

std::string Cell(const ClsFields& field, const std::string& text, size_t width) {
  if (DisplayWidth(text) > width) {
    return Fit(text, width);
  }
  return RightAligned(field) ? PadLeft(text, width) : PadRight(text, width);
}

// Shortens the widest column, one column of the terminal at a time, until the
// line (marks, and a blank before each column) fits Width.
void FitWidths(std::vector<size_t>& widths, size_t width) {
  if (width == 0 || widths.empty()) {
    return;
  }
  const auto line = [&] {
    return kMarksWidth + widths.size() + std::accumulate(widths.begin(), widths.end(), size_t{0});
  };
  while (line() > width) {
    auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= kMinColumnWidth) {
      break;  // too many columns: the line is cut at the edge below
    }
    --*widest;
  }
}

std::string CsvCell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  }
  return quoted + "\"";
}

std::string CsvValue(const ClsFields& field, const Variant& value) {
  if (!value.IsBlank() && (field.FieldType == F_Boolean || value.VarType() == vbBoolean)) {
    return ValueText(field, value) == "[x]" ? "1" : "0";
  }
  return ValueText(field, value);
}

}  // namespace

void WriteGrid(ClsRecordset& rs, int32_t count, size_t width, std::ostream& out) {
  const int64_t rows = rs.Rows();
  const int64_t current = rs.AbsolutePosition();
  const int64_t shown = std::clamp<int64_t>(count, 1, std::max<int64_t>(rows, 1));
  const int64_t first =
      std::clamp<int64_t>(current - (shown - 1) / 2, 1, std::max<int64_t>(1, rows - shown + 1));
  const int64_t last = std::min(rows, first + shown - 1);

  std::vector<std::shared_ptr<ClsFields>> fields(rs.begin(), rs.end());
  std::vector<std::vector<std::string>> texts(fields.size());
  std::vector<size_t> widths(fields.size());
  for (size_t i = 0; i < fields.size(); ++i) {
    widths[i] = DisplayWidth(ShownName(*fields[i]));
    for (int64_t row = first; row <= last; ++row) {
      texts[i].push_back(ValueText(*fields[i], fields[i]->GetValue(static_cast<int32_t>(row))));
      widths[i] = std::max(widths[i], DisplayWidth(texts[i].back()));
    }
    widths[i] = std::min(widths[i], kMaxColumnWidth);
  }
  FitWidths(widths, width);
  const auto emit = [&](const std::string& line) {
    const std::string trimmed = TrimRight(line);
    out << (width > 0 && DisplayWidth(trimmed) > width ? TrimRight(Fit(trimmed, width)) : trimmed)
        << "\n";
  };
  std::string header = "   ";
  for (size_t i = 0; i < fields.size(); ++i) {
    header += " " + Fit(ShownName(*fields[i]), widths[i]);
  }
  emit(header);
  for (int64_t row = first; row <= last; ++row) {
    std::string line = Marks(rs, static_cast<int32_t>(row), static_cast<int32_t>(current));
    for (size_t i = 0; i < fields.size(); ++i) {
      line += " " + Cell(*fields[i], texts[i][static_cast<size_t>(row - first)], widths[i]);
    }
    emit(line);
  }
  out << StatusLine(rs) << "\n";
}

void WriteCsv(ClsRecordset& rs, std::ostream& out) {
  std::string line;
  for (const auto& field : rs) {
    line += (line.empty() ? "" : ",") + CsvCell(ShownName(*field));
  }
  out << line << "\n";
  for (int32_t row = 1; row <= rs.Rows(); ++row) {
    line.clear();
    bool first = true;
    for (const auto& field : rs) {
      line += (first ? "" : ",") + CsvCell(CsvValue(*field, field->GetValue(row)));
      first = false;
    }
    out << line << "\n";
  }
}

}  // namespace varnel::app
