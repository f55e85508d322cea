#include "output/report_window.h"

#include "masterdata/drug_choice.h"
#include "masterdata/drug_field.h"
#include "output/date_range.h"
#include "support/app_test.h"

namespace luming {
namespace {

/// A report as a query would build it: bar, period, drug, grid.
class MovementReport : public ReportWindow, public DrugTaker {
 public:
  static constexpr const char* kName = "MovementReport";
  explicit MovementReport(AppContext& app)
      : ReportWindow(app, {kName, "药品出入", "打印预览", {{"开始查找  ", "search"}}}, {"编码", "数量"}),
        period(this),
        drug(this, app, "Command2") {}

  DateRange period;
  DrugField drug;
  std::string pressed;

  Layout Arrange() const override { return Arranged({period.S_D, period.E_D, drug.Arrange()}); }
  void FillD_Form(const std::string& code) override { drug.Take(code); }

 protected:
  std::string PrintTitle() const override { return drug.PM.Text() + "历史列表"; }
  GridPrintOptions PrintOptions() const override { return {.dateFrom = period.S_D.Text()}; }
  void BarPressed(const std::string& key) override { pressed = key; }
};

class ReportWindowTest : public AppTest {
 protected:
  ReportWindowTest() {
    Connect();
    store.Answer("Select YPMC From YF_YPML Where YPBM Like'100001'", {"YPMC"}, {{TextValue("阿莫西林胶囊")}});
    form.Show();
  }

  MovementReport& form = app.forms.Get<MovementReport>(app);
};

TEST_F(ReportWindowTest, TheBarPrintsExportsAndClosesAndHandsItsOtherButtonsOn) {
  form.fpSpread1.SetMaxRows(1);
  form.FillD_Form("100001");
  form.bar.UserPress("print");
  ASSERT_EQ(printing.previewed.size(), 1U);
  EXPECT_EQ(printing.previewed[0].title, "阿莫西林胶囊历史列表");
  EXPECT_EQ(printing.previewed[0].values[0].Value, "2026-03-01 到 ");
  desktop.files.push_back("list.xls");
  form.bar.UserPress("export");
  EXPECT_EQ(workbooks.saved.size(), 1U);
  form.bar.UserPress("search");
  EXPECT_EQ(form.pressed, "search");
  EXPECT_FALSE(form.fpSpread1.UserEdit(1, 1, "x")) << "a report is only read";
  form.bar.UserPress("close");
  EXPECT_TRUE(form.IsUnloaded());
}

TEST_F(ReportWindowTest, APeriodSpansWholeDaysAndIsNotTurned) {
  const Box refusal{"结束日期不能早于开始日期!", box::kStop, "错误"};
  form.period.S_D.SetValue(DateTime(2026, 2, 28));
  EXPECT_TRUE(form.period.CheckOrder(desktop, refusal));
  EXPECT_EQ(form.period.Start() + "|" + form.period.End(), "2026-02-28 00:00:00|2026-03-01 23:59:59");
  form.period.E_D.SetValue(DateTime(2026, 2, 27));
  EXPECT_FALSE(form.period.CheckOrder(desktop, refusal));
  EXPECT_EQ(desktop.TakeBox().text, refusal.text);
}

TEST_F(ReportWindowTest, TheDrugFieldOpensTheChoiceListForItsForm) {
  form.UserClick(form.drug.choose);
  ASSERT_NE(app.forms.FindAs<ek_PMXZ>(), nullptr);
  form.FillD_Form("100001");
  EXPECT_EQ(form.drug.BM.Text() + form.drug.PM.Text(), "100001阿莫西林胶囊");
  form.drug.SetEnabled(false);
  EXPECT_FALSE(form.drug.choose.Enabled());
}

}  // namespace
}  // namespace luming
