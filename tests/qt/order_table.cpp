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
  struct Column {
    const char* name;
    Enum_FieldType type;
    bool edit;
  };
  for (const Column& column :
       {Column{"Id", F_Numeral, true}, Column{"Customer", F_Text, true},
        Column{"Qty", F_Numeral, true}, Column{"Price", F_Numeral, true},
        Column{"Paid", F_Boolean, true}, Column{"OrderDate", F_Date, true}}) {
    auto field = rs.Add(column.name);
    field->FieldType = column.type;
    field->Edit = column.edit;
    field->IsData = field->SaveToDB = field->Copy = true;
    field->EnableNull = true;
  }
  rs.Item("Id")->Copy = false;
  rs.Item("Customer")->DefaultValue = Variant("New");
  rs.Item("Customer")->EnableNull = false;
  rs.Item("Price")->NumType = N_Float;
  rs.Item("Qty")->IsSum = true;
  rs.Item("OrderDate")->DateType = D_YMD;
  auto amount = rs.Add("Amount");
  amount->FieldType = F_Numeral;
  amount->NumType = N_Float;
  amount->ComputeString = "Qty*Price";
  amount->IsSum = true;
  amount->IsData = false;
  amount->EnableNull = true;
  for (const char* name : {"Fee", "Sign"}) {  // an amount in the currency its row names
    auto field = rs.Add(name);
    field->FieldType = name[0] == 'F' ? F_Currency : F_Text;
    field->IsData = field->SaveToDB = field->Copy = field->Edit = field->EnableNull = true;
  }
  rs.Item("Fee")->SymbolName = "Sign";
  rs.Item("Fee")->IsSum = true;
  rs.Advise(&reopen);
  ASSERT_FALSE(rs.InitDataSource());
  writer = std::make_unique<TableWriter>(rs, std::vector<std::string>{"Id"});
}

Variant OrderTable::Stored(const std::string& column, int32_t id) {
  db::Recordset read;
  read.Open("SELECT \"" + column + "\" FROM Orders WHERE \"Id\" = " + std::to_string(id),
            connection);
  const Variant value = read.Eof() ? Variant() : read.Fields().Item(0).Value();
  read.Close();
  return value;
}

int32_t OrderTable::StoredRows() {
  db::Recordset read;
  read.Open("SELECT COUNT(*) FROM Orders", connection);
  const int32_t rows = read.Fields().Item(0).Value().ToLong();
  read.Close();
  return rows;
}

}  // namespace varnel::testing
