#include <map>
#include <string>
#include <vector>

#include "app/absent_output.h"
#include "duel.h"
#include "masterdata/catalogue_import.h"
#include "office/office_workbooks.h"
#include "plain_store.h"
#include "stores.h"
#include "support/app_test.h"
#include "util/text.h"

namespace luming::bench {

namespace {

constexpr double kMillisecondsAllowed = 10'000;

/// A column that the import fills: its head in the workbook, its name in the table.
struct Column {
  std::string head;
  std::string name;
  bool is_number;
};

std::vector<Column> Columns(Connection& store) {
  std::map<std::string, Column> by_name;
  for (Recordset rows = store.Execute("Select File_Cname,File_Ename,Filed_Type from DATAGRID_HEAD"); !rows.Eof();
       rows.MoveNext()) {
    const std::string name = rows.Field(1).Text();
    by_name.try_emplace(name, Column{rows.Field(0).Text(), name, rows.Field(2).Text() == "2"});
  }
  std::vector<Column> columns;
  for (const auto& [name, column] : by_name) columns.push_back(column);
  return columns;
}

/// The drugs of the demonstration over and over, each time under codes of their own.
std::vector<std::vector<Value>> Drugs(Connection& store, const std::vector<Column>& columns, int count) {
  std::vector<std::vector<Value>> drugs;
  Recordset rows = store.Execute("Select * From YF_YPML");
  for (int i = 0; i < count; ++i) {
    std::vector<Value> drug;
    for (const Column& column : columns) drug.push_back(std::as_const(rows).Field(column.name));
    for (std::size_t col = 0; col < columns.size(); ++col) {
      if (columns[col].name == "YPBM") drug[col] = Value("IM" + std::to_string(100000 + i));
      // As a person types them: nothing rather than an empty text.
      if (drug[col].TextOrEmpty().empty()) drug[col] = Value();
    }
    drugs.push_back(std::move(drug));
    rows.MoveNext();
    if (rows.Eof()) rows.MoveFirst();
  }
  return drugs;
}

void WriteWorkbook(const std::filesystem::path& file, const std::vector<Column>& columns,
                   const std::vector<std::vector<Value>>& drugs) {
  Sheet sheet;
  sheet.name = "药品目录";
  sheet.columns.resize(columns.size());
  sheet.rows.emplace_back();
  for (const Column& column : columns) sheet.rows.back().push_back({column.head, 0});
  for (const std::vector<Value>& drug : drugs) {
    sheet.rows.emplace_back();
    for (std::size_t col = 0; col < columns.size(); ++col) {
      SheetCell cell;
      if (!drug[col].IsNull() && columns[col].is_number) {
        cell.value = drug[col].Number();
      } else if (!drug[col].IsNull()) {
        cell.value = drug[col].Text();
      }
      sheet.rows.back().push_back(cell);
    }
  }
  OfficeWorkbooks(NoPrinter::Instance(), {}).Save(file, sheet, {});
}

/// The import screen of an operator who picks one file.
class ImportDesk {
 public:
  explicit ImportDesk(const StoreCopy& store)
      : workbooks_(NoPrinter::Instance(), {}),
        app_({desktop_, devices_, printing_, workbooks_, BenchClock()}, store.Home(), {}, commands_),
        handler_(app_.forms) {
    app_.Cn = store.Connect();
    screen().Show();
  }

  UploadData& screen() { return app_.forms.Get<UploadData>(app_); }
  Connection& store() { return *app_.Cn; }
  void Import(const std::filesystem::path& file) {
    desktop_.files = {file.string()};
    screen().UserClick(screen().Command6);
  }

 private:
  ScriptedDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  OfficeWorkbooks workbooks_;
  CommandTable commands_;
  AppContext app_;
  Forms::HandlerScope handler_;
};

/// The same rows, codes and repairs with prepared statements; each row is committed by itself, as there.
class PlainImport {
 public:
  PlainImport(const std::filesystem::path& file, const std::vector<Column>& columns) : columns_(columns), store_(file) {
    std::string names = "PYDM,WBDM,SP_PYDM,SP_WBDM";
    std::string places = "?,?,?,?";
    for (const Column& column : columns) {
      names += "," + column.name;
      places += ",?";
    }
    insert_.emplace(store_.get(), ("INSERT INTO YF_YPML(" + names + ") VALUES(" + places + ")").c_str());
  }

  PlainStore& store() { return store_; }

  void Import(const std::vector<std::vector<Value>>& drugs) {
    store_.Run("PRAGMA synchronous = NORMAL");
    for (const std::vector<Value>& drug : drugs) Insert(drug);
    for (const char* column : {"KCL", "YKKCL", "CLB", "CLLSJ", "LSJ", "KCSX", "KCXX", "YKKCSX", "YKKCXX", "PLJ"}) {
      const std::string name = column;
      store_.Run("UPDATE YF_YPML SET " + name + (name == "CLB" ? "=1" : "=0") + " WHERE ifnull(" + name + ",1)=1");
    }
    store_.Run("PRAGMA synchronous = FULL; PRAGMA wal_checkpoint(PASSIVE)");
  }

 private:
  void Insert(const std::vector<Value>& drug) {
    constexpr int kCodes = 4;
    std::string codes[kCodes];
    for (int i = 1; i <= kCodes; ++i) insert_->Bind(i, nullptr);
    std::vector<std::string> cleaned(columns_.size());
    for (std::size_t col = 0; col < columns_.size(); ++col) {
      const int place = kCodes + static_cast<int>(col) + 1;
      const Value& value = drug[col];
      const bool is_trade_name = columns_[col].name == "SPMC";
      if (value.IsNull()) {
        insert_->Bind(place, nullptr);
        continue;
      }
      if (columns_[col].is_number) {
        insert_->Bind(place, value.Number());
        continue;
      }
      cleaned[col] = Replace(value.Text(), " ", "");
      insert_->Bind(place, cleaned[col]);
      if (!is_trade_name && columns_[col].name != "YPMC") continue;
      const int first = is_trade_name ? 2 : 0;
      codes[first] = Code(pinyin_, cleaned[col], std::string::npos);
      codes[first + 1] = Code(wubi_, cleaned[col], 1);
      insert_->Bind(first + 1, codes[first]).Bind(first + 2, codes[first + 1]);
    }
    insert_->Run();
  }

  static std::string Code(PlainStatement& find, const std::string& name, std::size_t letters) {
    std::string code;
    for (const std::string& character : Characters(name)) {
      if (character.size() == 1) {
        code += character;
        continue;
      }
      find.Bind(1, character);
      if (find.Step()) code += find.Text(0).substr(0, letters);
      find.Reset();
    }
    return code;
  }

  const std::vector<Column>& columns_;
  PlainStore store_;
  std::optional<PlainStatement> insert_;
  PlainStatement pinyin_{store_.get(), "SELECT PY FROM GY_HZBM WHERE HZ = ?"};
  PlainStatement wubi_{store_.get(), "SELECT WB FROM GY_HZBM WHERE HZ = ?"};
};

bool Agree(const StoreCopy& ours, PlainStore& plain) {
  PlainStore own(ours.File());
  for (const char* sum : {"SELECT COUNT(*) || ' ' || MAX(YPBM) || MAX(PYDM) || MAX(WBDM) FROM YF_YPML",
                          "SELECT COUNT(SP_PYDM) || ' ' || SUM(length(PYDM || WBDM || YPMC || GG)) FROM YF_YPML",
                          "SELECT round(SUM(LSJ + PLJ + YKKCL), 2) || ' ' || SUM(CLB) FROM YF_YPML"}) {
    const std::string a = own.Read(sum);
    const std::string b = plain.Read(sum);
    if (a == b) continue;
    std::fprintf(stderr, "%s: %s and %s\n", sum, a.c_str(), b.c_str());
    return false;
  }
  return true;
}

/// The whole import by the screen, reading of the workbook included.
void BM_ImportCatalogue(benchmark::State& state) {
  StoreCopy ours;
  StoreCopy theirs;
  ImportDesk desk(ours);
  const std::vector<Column> columns = Columns(desk.store());
  const int count = static_cast<int>(state.range(0));
  const std::vector<std::vector<Value>> drugs = Drugs(desk.store(), columns, count);
  const std::filesystem::path file = ours.Home() / "catalogue.xls";
  WriteWorkbook(file, columns, drugs);
  PlainImport plain(theirs.File(), columns);
  Duel duel(state);
  while (duel.NextRound()) {
    desk.store().Execute("Delete YF_YPML Where YPBM Like'IM%'");
    plain.store().Run("DELETE FROM YF_YPML WHERE YPBM LIKE 'IM%'");
    duel.Fight([&] { desk.Import(file); }, [&] { plain.Import(drugs); });
  }
  if (!desk.screen().Text1.Text().ends_with("成功:" + std::to_string(count) + " ；失败：0\r\n")) {
    return state.SkipWithError(desk.screen().Text1.Text().substr(0, 400).c_str());
  }
  if (!Agree(ours, plain.store())) return state.SkipWithError("both stores should hold the same");
  duel.Report(2, count);
  if (state.counters["ours_ms"] > kMillisecondsAllowed) state.SkipWithError("this is too long to wait for");
}
BENCHMARK(BM_ImportCatalogue)->Apply(AsDuel)->ArgName("rows")->Arg(20000)->Iterations(3);

}  // namespace

}  // namespace luming::bench
