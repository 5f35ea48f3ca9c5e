// Uses the installed Qt binding: a model over a recordset, and the Chinese
// translation that comes with the library.
#include <varnel/qt/language.h>
#include <varnel/qt/recordset_model.h>
#include <varnel/varnel.h>

#include <QApplication>
#include <QFile>
#include <iostream>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  varnel::ClsRecordset rs;
  rs.Add("Name")->DisplayName = "Name";
  rs.Rows(2);
  varnel::qt::RecordsetModel model(rs);
  varnel::qt::SetLanguage(2052);
  const bool translated = QFile::exists(":/i18n/varnel_qt_zh_CN.qm");
  std::cout << "Rows " << model.rowCount() << " translated " << translated << "\n";
  return model.rowCount() == 2 && translated ? 0 : 1;
}
