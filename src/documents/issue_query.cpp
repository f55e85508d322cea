#include <string>
#include <utility>

#include "documents/note_desk.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "output/date_range.h"
#include "output/grid_command.h"
#include "output/grid_routines.h"
#include "output/template_documents.h"
#include "screen/label.h"
#include "util/date_text.h"

namespace luming {

/// 出库单查询: the confirmed issue notes of a range of days, and the lines of the one in focus.
class Frm_CKDCX : public Form {
 public:
  static constexpr const char* kName = "Frm_CKDCX";
  explicit Frm_CKDCX(AppContext& app);

  ComboBox CKFS{this, "CKFS", "出库方式:", {.style = ComboStyle::kFixed}};
  Label RangeCaption{this, "RangeCaption", "开始日期                 结束日期"};
  DateRange range{this};
  Button Command1{this, "Command1", "开始查找", &Frm_CKDCX::Command1_Click};
  Grid fpSpread1{this,
                 "fpSpread1",
                 {GridColumn("出库单号", 16).Code(), GridColumn("出库日期", 11).Date(), GridColumn("出库科室", 14),
                  GridColumn("零售金额合计", 14).Figure(), GridColumn("进价金额合计", 14).Figure(),
                  GridColumn("操作员", 10), GridColumn("药库确认人", 11), GridColumn("药房确认人", 11)}};
  Button Command4{this, "Command4", "预览", &Frm_CKDCX::Command4_Click};
  Button Command7{this, "Command7", "打印(&P)", &Frm_CKDCX::Command7_Click};
  Button Command6{this, "Command6", "导出(&E)", &Frm_CKDCX::Command6_Click};
  Grid fpSpread2{this,
                 "fpSpread2",
                 {GridColumn("药品名称", 24), GridColumn("规格", 18), GridColumn("单位", 6), GridColumn("生产厂家", 24),
                  GridColumn("数量", 10).Figure(), GridColumn("零售", 11).Figure(), GridColumn("批号", 14).Code(),
                  GridColumn("效期", 11).Date(), GridColumn("金额", 14).Figure()}};
  Button Command2{this, "Command2", "打印(&P)", &Frm_CKDCX::Command2_Click};
  Button Command5{this, "Command5", "导出(&E)", &Frm_CKDCX::Command5_Click};

  Layout Arrange() const override;

 protected:
  void Load() override;

 private:
  void Command1_Click();
  void Command2_Click();
  void Command4_Click() { PrintList(false); }
  void Command5_Click() { ExportTrapped(app_, fpSpread2); }
  void Command6_Click() { ExportTrapped(app_, fpSpread1); }
  void Command7_Click() { PrintList(true); }
  void ShowLines(int row);
  void PrintList(bool direct);
  /// The number of the list's active note; empty where that is none.
  std::string NumberIn(int row) const;

  AppContext& app_;
};

Frm_CKDCX::Frm_CKDCX(AppContext& app) : Form(app.forms, kName, "出库单查询", WindowKind::kChild), app_(app) {
  for (Grid* grid : {&fpSpread1, &fpSpread2}) grid->SetReadOnly(true);
  fpSpread1.SetRowMode(true);
  fpSpread1.row_focus.Connect(this, &Frm_CKDCX::ShowLines);
}

Layout Frm_CKDCX::Arrange() const {
  return Column({
      Row({
          Layout(CKFS).Width(12),
          Column({RangeCaption, Row({Layout(range.S_D).Width(12).Bare(), Layout(range.E_D).Width(12).Bare()})}),
          Command1,
          Space(),
      }),
      SplitDown({
          Group("出库单据列表", Column({Row({Command4, Command7, Command6, Space()}), fpSpread1})),
          Group("选择单据明细", Column({Row({Command2, Command5, Space()}), fpSpread2})),
      }),
  });
}

void Frm_CKDCX::Load() {
  GridInit(fpSpread1);
  GridInit(fpSpread2);
  for (const std::string& item : {std::string("全部"), PharmacyOf(app_.KFMC)}) CKFS.AddItem(item);
  CKFS.SetListIndex(0);
}

void Frm_CKDCX::Command1_Click() {
  const std::string pharmacy = CKFS.Text() == "全部" ? "%" : CKFS.Text();
  if (!range.CheckOrder(app_.desktop, {"结束日期不能早于开始日期!", box::kWarning, "错误"})) return;
  Trapped(app_, [&] {
    Recordset notes;
    OpenRs(app_, notes,
           "Exec SP_YK_GetCKDList " + Quoted(app_.KFMC, "库房") + "," + Quoted(range.Start()) + "," +
               Quoted(range.End()) + "," + Quoted(pharmacy, "出库方式"));
    fpSpread1.Fill(std::move(notes),
                   {{"SLDH"}, {"CKRQ", "yyyy-mm-dd"}, {"LYDW"}, {"LSJJE"}, {"JJJE"}, {"CZY"}, {"YKQRR"}, {"YFQRR"}});
    GridSumRow(fpSpread1, 1, {4, 5});
    fpSpread1.SetActiveCell(1, 1);
    ShowLines(1);
  });
}

std::string Frm_CKDCX::NumberIn(int row) const {
  return row < 1 || fpSpread1.IsTotalRow(row) ? std::string() : fpSpread1.Text(row, 1);
}

/// What was issued is valued, what was asked for is shown.
void Frm_CKDCX::ShowLines(int row) {
  fpSpread2.SetMaxRows(0);
  const std::string number = NumberIn(row);
  if (number.empty()) return;
  Trapped(app_, [&] {
    Recordset lines;
    OpenRs(app_, lines,
           "Select A.PH,A.XQ,B.YPMC,B.GG,A.DW,A.CD,A.LSJ,A.SLSL,A.LSJ*A.SFSL AS 'LSJJE' From YPSLMX A Left join "
           "YF_YPML B ON A.YPBM=B.YPBM  Where SLDH Like" +
               Quoted(number, "出库单号"));
    fpSpread2.Fill(std::move(lines), {{"YPMC"},
                                      {"GG"},
                                      {"DW"},
                                      {"CD"},
                                      {"SLSL"},
                                      {"LSJ", "0.0000"},
                                      {"PH"},
                                      {"XQ", "yyyy-mm-dd"},
                                      {"LSJJE", "0.000"}});
    GridSumRow(fpSpread2, 1, {9});
  });
}

void Frm_CKDCX::Command2_Click() {
  const std::string number = NumberIn(fpSpread1.ActiveRow());
  if (number.empty()) {
    app_.desktop.MsgBox({"请先选择你要打印的单据", box::kWarning, "系统提示"});
    return;
  }
  PrintCKD(app_, false, number);
}

void Frm_CKDCX::PrintList(bool direct) {
  PrintTrapped(app_, fpSpread1, "【" + app_.KFMC + "】出库单据列表",
               {.direct = direct,
                .dateFrom = FormatDate(range.S_D.Value(), "YYYY-MM-DD"),
                .dateTo = FormatDate(range.E_D.Value(), "YYYY-MM-DD"),
                .footLeft = "制表人:" + app_.CurUser.GetUserName,
                .footRight = "打印日期:" + FormatDate(app_.clock.Today(), "YYYY-MM-DD"),
                .headCentre = "出库方式:" + CKFS.Text()});
}

const Screen kIssueQuery = ChildScreen<Frm_CKDCX>();

}  // namespace luming
