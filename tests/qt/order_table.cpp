#include "order_table.h"

namespace varnel::testing {

OrderTable::OrderTable() {
  connection->Open(db.ConnectionString());
  connection->Execute(
      "CREATE TABLE Orders (\"Id\" INTEGER PRIMARY KEY, \"Customer\" VARCHAR(40) NOT NULL,"
      " \"Qty\" INTEGER, \"Price\" NUMERIC(12,4), \"Paid\" BOOLEAN, \"OrderDate\" DATE,"
      " \"Fee\" NUMERIC(12,4), \"Sign\" VARCHAR(3))");
  const char* customers[] = {"Avery", "Blake", "Casey", "Devon", "Emery"};
  const char* signs[] = {"$", "€", "$", "¥", "€"};
  for (int32_t i = 1; i <= 5; ++i) {
    connection->Execute("INSERT INTO Orders VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
                        {Variant(i), Variant(customers[i - 1]), Variant(i * 2), Variant(1.25 * i),
                         Variant(i % 2 == 0), Variant(Date{45000.0 + i}),
                         Variant(Currency{i * 1000000}), Variant(signs[i - 1])});
  }
}

OrderTable::~OrderTable() {
  writer.reset();
  rs.CloseDataSource();
  connection->Close();
}

void OrderTable::Load() {
  rs.SFConnection = connection;
  rs.ConnectString = connection->ConnectionString();
  rs.TableName = "Orders";
  rs.OrderByField1 = "[Id]";
  // Amount, between the dates and the fees, is computed: not read, saved, copied or typed.
  const std::pair<const char*, Enum_FieldType> columns[] = {
      {"Id", F_Numeral},     {"Customer", F_Text}, {"Qty", F_Numeral},
      {"Price", F_Numeral},  {"Paid", F_Boolean},  {"OrderDate", F_Date},
      {"Amount", F_Numeral}, {"Fee", F_Currency},  {"Sign", F_Text}};
  for (const auto& [name, type] : columns) {
    auto field = rs.Add(name);
    field->FieldType = type;
    const bool data = std::string(name) != "Amount";
    field->IsData = field->SaveToDB = field->Copy = field->Edit = data;
    field->EnableNull = true;
  }
  rs.Item("Id")->Copy = false;
  rs.Item("Customer")->DefaultValue = Variant("New");
  rs.Item("Customer")->EnableNull = false;
  rs.Item("OrderDate")->DateType = D_YMD;
  rs.Item("Amount")->ComputeString = "Qty*Price";
  for (const char* name : {"Price", "Amount"}) {
    rs.Item(name)->NumType = N_Float;
  }
  for (const char* name : {"Qty", "Amount", "Fee"}) {
    rs.Item(name)->IsSum = true;
  }
  rs.Item("Fee")->SymbolName = "Sign";  // an amount in the currency its row names
  rs.Advise(&reopen);
  ASSERT_FALSE(rs.InitDataSource());
  writer = std::make_unique<TableWriter>(rs, std::vector<std::string>{"Id"});
}

Variant OrderTable::Stored(const std::string& column, int32_t id) {
  return StoredValue("SELECT \"" + column + "\" FROM Orders WHERE \"Id\" = " + std::to_string(id));
}

int32_t OrderTable::StoredRows() { return StoredValue("SELECT COUNT(*) FROM Orders").ToLong(); }

Variant OrderTable::StoredValue(const std::string& sql) {
  db::Recordset read;
  read.Open(sql, connection);
  return read.Eof() ? Variant() : read.Fields().Item(0).Value();
}

}  // namespace varnel::testing
