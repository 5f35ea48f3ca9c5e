// A small Orders table on the provider under test, a recordset over it with
// a field of each kind (Fee in the currency its row's Sign names), and the
// binding's model, view and form on top.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "load_progress.h"
#include "support/capture_ui.h"
#include "support/test_database.h"
#include "varnel/qt/recordset_form.h"
#include "varnel/qt/recordset_model.h"
#include "varnel/qt/recordset_view.h"
#include "varnel/varnel.h"

namespace varnel::testing {

class OrderTable : public ::testing::TestWithParam<TestProvider> {
 protected:
  OrderTable();
  ~OrderTable() override;

  // Opens the recordset on the table (rows 1..5, ordered by Id) and attaches a writer.
  void Load();
  // A value read back from the database: SELECT column FROM Orders WHERE Id = id.
  Variant Stored(const std::string& column, int32_t id);
  // How many rows the table holds.
  int32_t StoredRows();
  // The first value of Sql's first row, or Empty when it has none.
  Variant StoredValue(const std::string& sql);

  TestDatabase db{GetParam()};
  std::shared_ptr<db::Connection> connection = std::make_shared<db::Connection>();
  ClsRecordset rs;
  std::unique_ptr<TableWriter> writer;
  app::ReopenOnRefresh reopen{rs};  // a refresh reads the table again
};

}  // namespace varnel::testing
