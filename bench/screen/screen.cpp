// What the window costs over the recordset it shows, on 1,000,000 rows, each
// measured against its reference in the same run (offscreen):
//   open    window shown and painted + InitDataSource  vs  InitDataSource alone  (<= 1.1x)
//   paint   display text of every visible grid cell     vs  GetValue of the same  (<= 3x)
//   memory  resident growth with model and window, less Qt's fixed cost,
//           vs the recordset alone                                               (<= 1.05x)
//   edit    one grid edit shown, 1,000,000 rows          vs  10,000 rows           (~1x)
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QHeaderView>
#include <QSplitter>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "support/orders_table.h"
#include "varnel/qt/recordset_form.h"
#include "varnel/qt/recordset_model.h"
#include "varnel/qt/recordset_view.h"

namespace {

using Clock = std::chrono::steady_clock;
using varnel::ClsRecordset;

double Millis(const std::function<void()>& work) {
  const Clock::time_point start = Clock::now();
  work();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

long ResidentKb() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) {
      return std::stol(line.substr(6));
    }
  }
  return 0;
}

void Configure(ClsRecordset& rs, int32_t rows) {
  rs.ConnectString = varnel::bench::OrdersConnection(rows);
  rs.TableName = varnel::bench::kOrdersTable;
  rs.UserOpenMode = varnel::U_Auto;
  const varnel::Enum_FieldType types[] = {varnel::F_Numeral, varnel::F_Text,    varnel::F_Text,
                                          varnel::F_Numeral, varnel::F_Numeral, varnel::F_Date,
                                          varnel::F_Boolean, varnel::F_Text};
  int i = 0;
  for (const char* name : varnel::bench::kOrdersColumns) {
    auto field = rs.Add(name);
    field->FieldType = types[i++];
    field->IsData = field->Edit = field->EnableNull = true;
  }
  rs.Item("Price")->NumType = varnel::N_Float;
  rs.Item("Qty")->IsSum = true;
}

// The window of varnel-screen as far as it costs anything: the grid and the
// form side by side over one model (menus and toolbars are fixed costs).
class Window : public QSplitter {
 public:
  explicit Window(ClsRecordset& rs) : model_(rs), form_(model_) {
    grid_.SetRecordsetModel(&model_);
    addWidget(&grid_);
    addWidget(&form_);
    resize(1180, 640);
  }
  varnel::qt::RecordsetModel& Model() { return model_; }
  varnel::qt::RecordsetView& Grid() { return grid_; }

 private:
  varnel::qt::RecordsetModel model_;
  varnel::qt::RecordsetView grid_;
  varnel::qt::RecordsetForm form_;
};

void Settle() {
  for (int i = 0; i < 3; ++i) {
    QApplication::processEvents();
  }
}

// Display text of every cell in view against GetValue of the same cells.
void Paint(Window& window, ClsRecordset& rs) {
  const QTableView& grid = window.Grid();
  const int first = grid.rowAt(0), last = grid.rowAt(grid.viewport()->height() - 1);
  const int columns = window.Model().columnCount();
  std::vector<double> texts, values;
  size_t sink = 0;
  for (int rep = 0; rep < 1000; ++rep) {  // a page takes microseconds: many samples
    texts.push_back(Millis([&] {
      for (int r = first; r <= last; ++r) {
        for (int c = 0; c < columns; ++c) {
          sink += window.Model().index(r, c).data().toString().size();
        }
      }
    }));
    values.push_back(Millis([&] {
      for (int r = first; r <= last; ++r) {
        for (int c = 0; c < columns; ++c) {
          sink += static_cast<size_t>(rs.Item(c + 1)->GetValue(r + 1).VarType());
        }
      }
    }));
  }
  std::printf("paint   %d cells: text %.4f ms, GetValue %.4f ms, ratio %.2fx (limit 3x)%s\n",
              (last - first + 1) * columns, Median(texts), Median(values),
              Median(texts) / Median(values), sink == 0 ? " " : "");
}

// One grid edit and its repaint, timed on a table of `rows` rows.
double EditMillis(int32_t rows) {
  ClsRecordset rs;
  Configure(rs, rows);
  rs.InitDataSource();
  Window window(rs);
  window.show();
  Settle();
  std::vector<double> samples;
  for (int rep = 0; rep < 30; ++rep) {
    const QModelIndex cell = window.Model().index(0, 3);
    samples.push_back(Millis([&] {
      window.Model().setData(cell, QString::number(rep + 1));
      Settle();
    }));
    rs.UndoRecord();
    Settle();
  }
  return Median(samples);
}

// The recordset alone, measured in a child process so that the memory it
// frees cannot be reused by the window measured afterwards.
struct Alone {
  double millis;
  long kb;
};

Alone MeasureAlone(int32_t rows) {
  int channel[2];
  if (pipe(channel) != 0) {
    return {0, 0};
  }
  if (fork() == 0) {
    ClsRecordset rs;
    Configure(rs, rows);
    const long start = ResidentKb();
    Alone alone{Millis([&] { rs.InitDataSource(); }), 0};
    alone.kb = ResidentKb() - start;
    (void)!write(channel[1], &alone, sizeof alone);
    _exit(0);
  }
  Alone alone{0, 0};
  (void)!read(channel[0], &alone, sizeof alone);
  wait(nullptr);
  close(channel[0]);
  close(channel[1]);
  return alone;
}

}  // namespace

int main(int argc, char** argv) {
  const int32_t kRows = argc > 1 ? std::atoi(argv[1]) : 1000000;  // bench_screen [rows]
  varnel::bench::OrdersConnection(kRows);                         // made before anything is timed
  varnel::bench::OrdersConnection(10000);
  const Alone reference = MeasureAlone(kRows);
  const double alone = reference.millis;
  const long recordset_kb = reference.kb;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);

  const long before_qt = ResidentKb();
  long qt_fixed = 0;
  {
    ClsRecordset small;
    Configure(small, 10000);
    small.InitDataSource();
    Window window(small);
    window.show();
    Settle();
    qt_fixed = ResidentKb() - before_qt;
  }
  ClsRecordset rs;
  Configure(rs, kRows);
  const long start = ResidentKb();
  Window window(rs);
  const double shown = Millis([&] {
    window.show();
    rs.InitDataSource();
    Settle();
  });
  const long window_kb = ResidentKb() - start;
  std::printf(
      "open    1,000,000 rows: InitDataSource %.0f ms, with the window %.0f ms, "
      "ratio %.3fx (limit 1.1x)\n",
      alone, shown, shown / alone);
  Paint(window, rs);
  std::printf(
      "memory  recordset %ld kB, with model and window %ld kB (Qt's fixed cost "
      "%ld kB taken off), ratio %.3fx (limit 1.05x)\n",
      recordset_kb, window_kb, qt_fixed,
      static_cast<double>(std::max(0L, window_kb - qt_fixed)) / recordset_kb);
  const double small_edit = EditMillis(10000), large_edit = EditMillis(kRows);
  std::printf(
      "edit    one grid edit shown: 10,000 rows %.3f ms, 1,000,000 rows %.3f ms, "
      "ratio %.2fx\n",
      small_edit, large_edit, large_edit / small_edit);
  return 0;
}
