#include "screen_setup.h"

#include <strings.h>

#include <stdexcept>

#include "sample_database.h"
#include "texts.h"

namespace varnel::app {
namespace {

void DefineFromTable(const std::shared_ptr<db::Connection>& connection, const std::string& table,
                     ClsRecordset& rs) {
  // A field per column, as the table's schema describes it (the library has
  // already told the user why when it cannot).
  if (rs.ReadTableFields(table, connection)) {
    throw std::runtime_error(Say(Text::CannotOpen, fmt::arg("what", table),
                                 fmt::arg("reason", "its columns could not be read")));
  }
}

void DefineFromView(const std::shared_ptr<db::Connection>& connection, const std::string& view,
                    const std::string& fields_table, ClsRecordset& rs) {
  auto information = std::make_shared<db::Recordset>();
  information->Open("SELECT * FROM " + fields_table, connection);
  rs.FieldsInforName = fields_table;
  rs.ReadFieldsInformation(information, view);
  information->Close();
  if (rs.Count() == 0) {
    throw std::runtime_error(Say(Text::CannotOpen, fmt::arg("what", view),
                                 fmt::arg("reason", fields_table + " describes no fields")));
  }
}

}  // namespace

std::string ResolveConnection(const Options& options, std::ostream& out) {
  if (!options.connect.empty()) {
    return options.connect;
  }
  const std::filesystem::path path = options.data_dir / "sample.db";
  if (EnsureSampleDatabase(path)) {
    out << Say(Text::SampleCreated, fmt::arg("path", path.string())) << "\n";
  }
  return SqliteConnectionString(path);
}

void DefineScreen(const Options& options, const std::shared_ptr<db::Connection>& connection,
                  ClsRecordset& rs) {
  rs.ConnectString = connection->ConnectionString();
  rs.SFConnection = connection;
  rs.UserOpenMode = U_User;
  if (!options.table.empty()) {
    DefineFromTable(connection, options.table, rs);
  } else {
    DefineFromView(connection, options.view.empty() ? kSampleView : options.view,
                   options.fields_table, rs);
  }
}

ScreenNames ReadScreenNames(const Options& options,
                            const std::shared_ptr<db::Connection>& connection) {
  ScreenNames names;
  if (!options.table.empty()) {
    return names;
  }
  try {
    db::Recordset rows;
    rows.Open("SELECT Name, DisplayNameEnglish, DisplayNameChinese FROM " + options.fields_table +
                  " WHERE ViewName = '" +
                  MdlQuery::QuoteText(options.view.empty() ? kSampleView : options.view) + "'",
              connection);
    const auto text = [&](int32_t column) {
      const Variant value = rows.Fields().Item(column).Value();
      return value.IsBlank() ? std::string() : CStr(value);
    };
    for (; !rows.Eof(); rows.MoveNext()) {
      names.by_field[text(0)] = {text(1), text(2)};
    }
  } catch (const std::exception&) {
    names.by_field.clear();  // a table without names in both languages: keep the ones read
  }
  return names;
}

void ApplyNames(ClsRecordset& rs, const ScreenNames& names, int32_t language) {
  for (const auto& field : rs) {
    const auto found = names.by_field.find(field->Name);
    if (found != names.by_field.end()) {
      const std::string& name = language == 2052 ? found->second.second : found->second.first;
      field->DisplayName = name.empty() ? found->second.first : name;
    }
  }
}

void ProtectKeys(ClsRecordset& rs, const std::vector<std::string>& keys) {
  for (const auto& field : rs) {
    for (const std::string& key : keys) {
      if (strcasecmp(field->Name.c_str(), key.c_str()) == 0) {
        field->Copy = false;
      }
    }
  }
}

}  // namespace varnel::app
