#include "masterdata/catalogue_import.h"

#include "support/store_test.h"
#include "util/text.h"

namespace luming {
namespace {

using Rows = std::vector<std::vector<Value>>;

/// One sheet 药品目录 behind another; its first row are the heads.
class FakeSheets : public SheetReader {
 public:
  explicit FakeSheets(Rows rows) : rows_(std::move(rows)) {}
  std::vector<std::string> Names() const override { return {"封面", "药品目录"}; }
  Recordset Read(std::string_view) const override {
    std::vector<std::string> heads;
    for (const Value& head : rows_.front()) heads.push_back(head.Text());
    Recordset table(heads);
    for (std::size_t row = 1; row < rows_.size(); ++row) table.AppendRow(rows_[row]);
    return table;
  }

 private:
  Rows rows_;
};

/// Finds the same sheets in whatever file is opened.
class OneWorkbook : public FakeWorkbooks {
 public:
  Rows rows;
  std::unique_ptr<SheetReader> Read(const std::filesystem::path&) override {
    return std::make_unique<FakeSheets>(rows);
  }
};

class UploadDataTest : public StoreTest {
 protected:
  UploadDataTest() : own_({desktop, devices, printing, workbook, clock}, directory.Path(), {}, MainCommands()) {
    own_.Cn = app.Cn;
    own_.ConnStr = app.ConnStr;
    const std::pair<const char*, const char*> columns[] = {
        {"编码','YPBM", "1"}, {"零售价','LSJ", "2"}, {"日期','ZCSB", "3"}, {"ABC','ABC", ""},   {"空','", "1"},
        {"品名','YPMC", "1"}, {"项目','SFXM", "1"},  {"进价','PFJ", "2"},  {"收费','SFSF", "2"}};
    for (const auto& [names, kind] : columns) {
      Run("Insert Into DATAGRID_HEAD(Tabel_Name,File_Cname,File_Ename,Filed_Type) Values('YF_YPML','" +
          std::string(names) + "','" + kind + "')");
    }
  }

  /// What the import of these rows writes into the log.
  std::string Import(Rows rows) {
    workbook.rows = std::move(rows);
    desktop.files = {"目录.xls"};
    auto& form = own_.forms.Get<UploadData>(own_);
    form.Show();
    TakeSent();
    form.UserClick(form.Command6);
    return form.Text1.Text();
  }
  std::vector<std::string> Inserted() {
    std::vector<std::string> values;
    for (const std::string& sql : TakeSent()) {
      if (sql.starts_with("Insert into")) values.push_back(sql.substr(sql.find("(")));
    }
    return values;
  }

  OneWorkbook workbook;

 private:
  AppContext own_;
};

TEST_F(UploadDataTest, TheKindOfAColumnDecidesHowItsValuesAreSent) {
  const DateTime day(2026, 3, 1);
  Import({{Value("abc"), Value("编码"), Value("零售价"), Value("日期"), Value("没有")},
          {Value("b"), Value(7.0), Value(" 12.5 "), Value(day), Value("x")},
          {Value("A B"), Value("A'1 0\n"), Value(0.000012), Value("2026-3-1 "), Value()},
          {Value(), Value("11"), Value(), Value(46082.0), Value()},
          {Value(day), Value("12"), Value(true), Value("以后"), Value()}});
  const std::string head = "(ABC,YPBM,LSJ,ZCSB) Values ";
  EXPECT_EQ(Inserted(),
            (std::vector<std::string>{head + "('b','7',12.5,'2026/3/1')", head + "('AB','A10',1.2E-05,'2026-3-1 ')",
                                      head + "(null,'11',null,null)", head + "('2026/3/1','12',True,null)"}));
  EXPECT_EQ(Query("select YPBM,LSJ from YF_YPML where YPBM in ('7','A10','11','12') order by YPBM"),
            "11\t0\n7\t12.5\nA10\t1.2E-05");
}

TEST_F(UploadDataTest, AColumnThatIsMappedToNothingTakesNoPlace) {
  const std::string log =
      Import({{Value("编码"), Value("空"), Value("零售价")}, {Value("21"), Value("x"), Value(2.0)}});
  EXPECT_EQ(Inserted(), (std::vector<std::string>{"(YPBM,LSJ) Values ('21',2)"}));
  EXPECT_TRUE(log.ends_with("\r\n从Excel 药品目录  导入完成,其中成功:1 ；失败：0\r\n")) << log;
}

TEST_F(UploadDataTest, TheLogNamesWhatTheImportedDrugsLack) {
  Run("Insert Into eK_ChargeItem(sItemName,YPBZ) Values('西药费',1)");
  const std::string log = Import({{Value("编码"), Value("品名"), Value("项目"), Value("进价"), Value("收费")},
                                  {Value("a1"), Value("甲"), Value("西药费"), Value(1.0), Value(0.0)},
                                  {Value("a2"), Value("乙"), Value("西药"), Value(), Value(1.0)},
                                  {Value("a3"), Value("丙"), Value(), Value(2.0), Value()}});
  EXPECT_EQ(log,
            "提示：没有收费项目、不会出现在药品目录中的药品 1 种：a3 丙\r\n"
            "提示：收费项目不存在、不会出现在药品目录中的药品 1 种：a2 乙（西药）\r\n"
            "提示：没有进价的药品 1 种：a2 乙\r\n"
            "提示：“是否收费”没有填的药品 1 种：a3 丙\r\n"
            "从Excel 药品目录  导入完成,其中成功:3 ；失败：0\r\n");
}

TEST_F(UploadDataTest, ALostConnectionFailsTheRowsThatAreLeft) {
  int yields = 0;
  desktop.yielded = [&] {
    if (++yields == 1) app.Cn->Close();
  };
  const std::string log = Import({{Value("编码")}, {Value("31")}, {Value("32")}, {Value("33")}});
  EXPECT_TRUE(log.ends_with("其中成功:1 ；失败：2\r\n")) << log;
  EXPECT_EQ(Split(log, "第【").size(), 3U) << log;
  EXPECT_EQ(yields, 3);
  EXPECT_TRUE(desktop.TakeBoxTexts().empty()) << "the repairs open it again";
  EXPECT_EQ(Query("select count(*) from YF_YPML where YPBM in ('31','32','33')"), "1");
}

}  // namespace
}  // namespace luming
