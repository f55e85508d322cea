#include <string>
#include <utility>
#include <vector>

#include "documents/screens.h"
#include "frame/gateway.h"
#include "masterdata/dictionary_lists.h"
#include "output/date_range.h"
#include "output/grid_command.h"
#include "output/grid_routines.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "stock/movement_log.h"
#include "util/date_text.h"

namespace luming {

namespace {

constexpr const char* kAll = "全部";

// clang-format off
std::vector<GridColumn> Columns() {
  return {GridColumn("编码").Code(),   GridColumn("品名").Text(),       GridColumn("商品名").Text(),
          GridColumn("规格").Text(),   GridColumn("单位").Text(),       GridColumn("产地").Text(),
          GridColumn("库存").Figure(), GridColumn("零售价").Figure(),   GridColumn("进价").Figure(),
          GridColumn("拆零比").Figure(), GridColumn("最小单位").Text(), GridColumn("拆零零售价").Figure(),
          GridColumn("收费项目").Text()};
}
const std::vector<ColumnSource> kSources = {{"YPBM"}, {"YPMC"}, {"SPMC"}, {"GG"}, {"DW"}, {"SCCJ"}, {"YKKCL"},
                                            {"LSJ", "0.0000"}, {"PFJ"}, {"CLB"}, {"ZXDW"}, {"CLLSJ"}, {"SFXM"}};
// clang-format on

}  // namespace

/// 未盘点药品管理: the drugs that no stock take of a period has counted, and setting them all to 0.
class Frm_WPDYPGL : public Form {
 public:
  static constexpr const char* kName = "Frm_WPDYPGL";
  explicit Frm_WPDYPGL(AppContext& app)
      : Form(app.forms, kName, "未盘点药品管理", WindowKind::kChild),
        range(this, "盘点开始日期：", "结束日期："),
        fpSpread1(this, "fpSpread1", Columns()),
        app_(app) {
    fpSpread1.SetReadOnly(true);
  }

  DateRange range;
  Button Command1{this, "Command1", "开始查找", &Frm_WPDYPGL::Command1_Click};
  ComboBox Combo1{this, "Combo1", "过滤方式", {.style = ComboStyle::kFixed}};
  Button Command6{this, "Command6", "刷新", &Frm_WPDYPGL::Command6_Click};
  Grid fpSpread1;
  Button Command2{this, "Command2", "将未盘点项目库存设置为0", &Frm_WPDYPGL::Command2_Click};
  Button Command3{this, "Command3", "打印", &Frm_WPDYPGL::Command3_Click};
  Button Command4{this, "Command4", "导出", &Frm_WPDYPGL::Command4_Click};
  Button Command5{this, "Command5", "关闭", &Frm_WPDYPGL::Command5_Click};

  Layout Arrange() const override {
    return Column({
        Row({range.S_D, range.E_D, Command1, Combo1, Command6, Space()}),
        fpSpread1,
        Row({Command2, Space(), Command3, Command4, Command5}),
    });
  }

 protected:
  void Load() override;

 private:
  void Search();
  void ShowRows();
  Statement OfPeriod(const char* procedure) const;

  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void Command4_Click() { ExportTrapped(app_, fpSpread1); }
  void Command5_Click() { Unload(); }
  void Command6_Click();

  AppContext& app_;
  Recordset drugs_;  ///< stays open: the filter works on it
};

void Frm_WPDYPGL::Load() {
  GridInit(fpSpread1);
  Combo1.AddItem(kAll);
  Combo1.SetListIndex(0);
  Trapped(app_, [this] {
    const Statement items =
        "Select sChargeItemName From YFYK_LinkItem where sInvItemName like" + Quoted(app_.KFMC, "库房");
    for (const std::string& item : ReadList(app_, items)) Combo1.AddItem(item);
  });
}

Statement Frm_WPDYPGL::OfPeriod(const char* procedure) const {
  return std::string("Exec ") + procedure + " " + Quoted(range.Start()) + "," + Quoted(range.End()) + "," +
         Quoted(app_.KFMC, "库房");
}

void Frm_WPDYPGL::Search() {
  OpenRs(app_, drugs_, OfPeriod("SP_Get_WFYYPML"));
  ShowRows();
}

void Frm_WPDYPGL::ShowRows() {
  fpSpread1.Fill(drugs_, kSources);
}

void Frm_WPDYPGL::Command1_Click() {
  Trapped(app_, [this] { Search(); });
}

void Frm_WPDYPGL::Command6_Click() {
  if (!drugs_.IsOpen()) {
    app_.desktop.MsgBox({"必须要先查询然后才能过滤。", box::kInformation, "系统提示"});
    return;
  }
  Trapped(app_, [this] {
    drugs_.Filter(Combo1.Text() == kAll ? "SFXM<>'KVQRN'" : "SFXM='" + Combo1.Text() + "'");
    ShowRows();
  });
}

/// The list is made current first: what goes to 0 is what the operator would see now.
void Frm_WPDYPGL::Command2_Click() {
  const Box question{"你真的要将未盘点药品库存设置为0吗?执行后将不可恢复!", box::kQuestion + box::kYesNo, "请确认"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  Trapped(app_, [this] {
    Search();
    if (!ExecSql(app_, OfPeriod("SP_Set_PDKC"))) return;
    Search();
    AddServerLog(app_, app_.KFMC, "用户: " + app_.CurUser.GetUserName + "将未盘点药品库存设置为0");
    app_.desktop.MsgBox({"执行成功", box::kInformation, "系统提示"});
  });
}

void Frm_WPDYPGL::Command3_Click() {
  const auto day = [](const DateBox& box) { return FormatDate(box.Value(), "yyyy-mm-dd"); };
  PrintTrapped(app_, fpSpread1, "未盘点药品列表", {.headCentre = "日期:" + day(range.S_D) + "-" + day(range.E_D)});
}

const Screen kUncountedDrugs = ChildScreen<Frm_WPDYPGL>();

}  // namespace luming
