// The console's showing commands: the form, the list (fitted to the terminal
// or as CSV), the SQL, the details of a refusal, the language and help.
#include <cerrno>
#include <cstring>
#include <fstream>

#include "command_words.h"
#include "console.h"
#include "field_hints.h"
#include "form_view.h"
#include "grid_view.h"
#include "terminal.h"
#include "texts.h"

namespace varnel::app {
namespace {

constexpr int64_t kDefaultListRows = 10;
constexpr int64_t kMostListRows = 1000000;

}  // namespace

void Console::List(const std::string& argument) {
  const bool csv = Same(argument, "--csv");
  const std::optional<int64_t> count =
      argument.empty() ? kDefaultListRows : NumberIn(argument, 1, kMostListRows);
  if (!csv && !count) {
    Usage("list [<count>] | list --csv   (count 1 .. " + std::to_string(kMostListRows) + ")");
    return;
  }
  if (rs_.EditStatus() == E_Query) {
    Fail(Tr(Text::QueryHint));
    return;
  }
  if (csv) {
    WriteCsv(rs_, out_);
    return;
  }
  WriteGrid(rs_, static_cast<int32_t>(*count), OutputWidth(), out_);
}

void Console::Export(const std::string& argument) {
  const std::string file = Trim(argument);
  if (file.empty()) {
    Usage("export <file>");
    return;
  }
  if (rs_.EditStatus() == E_Query) {
    Fail(Tr(Text::QueryHint));
    return;
  }
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (stream) {
    WriteCsv(rs_, stream);
    stream.close();
  }
  if (!stream) {
    Fail(app::Say(Text::CannotWrite, fmt::arg("file", file),
                  fmt::arg("reason", std::strerror(errno))));
    return;
  }
  Say(app::Say(Text::Exported, fmt::arg("rows", rs_.Rows()), fmt::arg("file", file)));
}

void Console::Show(const std::string&) { Form(); }

void Console::Sql(const std::string&) { Say(ComposedSelect(rs_)); }

void Console::Details(const std::string&) {
  Say(ui_.Details().empty() ? std::string(Tr(Text::NoDetails)) : ui_.Details());
}

void Console::Lang(const std::string& argument) {
  const int32_t language = Same(argument, "en") ? 1033 : (Same(argument, "zh") ? 2052 : 0);
  if (language == 0) {
    Usage("lang en | lang zh");
    return;
  }
  SetThreadUILanguage(language);
  ApplyNames(rs_, settings_.names, language);
  Say(Tr(Text::Language));
  Form();
}

void Console::Refresh(const std::string&) {
  rs_.RefreshDataSource();
  Form();
}

void Console::Help(const std::string&) {
  Say(Tr(Text::Help));
  Say(Tr(Text::CriteriaHeading));
  for (const CriteriaKind& kind : CriteriaKinds()) {
    std::string line = "  " + kind.name + ":";
    for (size_t i = 0; i < kind.examples.size(); ++i) {
      line += (i == 0 ? "  " : " | ") + kind.examples[i];
    }
    Say(line);
  }
}

}  // namespace varnel::app
