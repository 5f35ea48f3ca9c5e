#include "grid_view.h"

#include <algorithm>
#include <string>
#include <vector>

#include "form_view.h"
#include "text_width.h"
#include "value_text.h"

namespace varnel::app {
namespace {

constexpr size_t kMaxColumnWidth = 22;

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

}  // namespace

void WriteGrid(ClsRecordset& rs, int32_t count, std::ostream& out) {
  const int32_t rows = rs.Rows();
  const int32_t current = rs.AbsolutePosition();
  count = std::max(count, 1);
  const int32_t first = std::clamp(current - (count - 1) / 2, 1, std::max(1, rows - count + 1));
  const int32_t last = std::min(rows, first + count - 1);

  std::vector<std::shared_ptr<ClsFields>> fields(rs.begin(), rs.end());
  std::vector<std::vector<std::string>> texts(fields.size());
  std::vector<size_t> widths(fields.size());
  for (size_t i = 0; i < fields.size(); ++i) {
    widths[i] = DisplayWidth(ShownName(*fields[i]));
    for (int32_t row = first; row <= last; ++row) {
      texts[i].push_back(ValueText(*fields[i], fields[i]->GetValue(row)));
      widths[i] = std::max(widths[i], DisplayWidth(texts[i].back()));
    }
    widths[i] = std::min(widths[i], kMaxColumnWidth);
  }
  std::string header = "   ";
  for (size_t i = 0; i < fields.size(); ++i) {
    header += " " + Fit(ShownName(*fields[i]), widths[i]);
  }
  out << TrimRight(header) << "\n";
  for (int32_t row = first; row <= last; ++row) {
    std::string line = Marks(rs, row, current);
    for (size_t i = 0; i < fields.size(); ++i) {
      line += " " + Cell(*fields[i], texts[i][static_cast<size_t>(row - first)], widths[i]);
    }
    out << TrimRight(line) << "\n";
  }
  out << StatusLine(rs) << "\n";
}

}  // namespace varnel::app
