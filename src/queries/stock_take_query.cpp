#include <string>
#include <vector>

#include "frame/gateway.h"
#include "frame/user_rights.h"
#include "masterdata/charge_item_tree.h"
#include "masterdata/clean_control.h"
#include "masterdata/drug_choice.h"
#include "masterdata/drug_field.h"
#include "output/grid_command.h"
#include "output/grid_routines.h"
#include "queries/screens.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/date_box.h"
#include "screen/redraw_pause.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

namespace {

namespace col {
enum Column {
  kCode = 1,
  kDrug,
  kSpecification,
  kUnit,
  kOrigin,
  kPrice,
  kBook,
  kCounted,
  kCountedIn,
  kDifference,
  kDifferenceAtRetail,
  kValue,
  kPurchasePrice,
  kDifferenceAtPurchase,
  kChargeItem,
};
}  // namespace col

std::vector<GridColumn> Columns() {
  return {GridColumn("编码").Code(),
          GridColumn("品名").Text(),
          GridColumn("规格").Text(),
          GridColumn("单位").Text(),
          GridColumn("产地").Text(),
          GridColumn("零售价").Figure(),
          GridColumn("帐面库存").Figure(),
          GridColumn("实际库存").Figure(),
          GridColumn("盘点单位").Text(),
          GridColumn("盈亏数").Figure(),
          GridColumn("盈亏金额(零售价)").Figure(),
          GridColumn("库存金额").Figure(),
          GridColumn("进价").Figure(),
          GridColumn("盈亏金额").Figure(),
          GridColumn("药品类型").Text()};
}

/// A quantity at a price. A count in the unit that the catalogue calls the smallest takes the price as it stands; any
/// other is taken for one of smallest units against the price of the large one.
class Valuer {
 public:
  explicit Valuer(const Recordset& row)
      : divided_(row.Field("zxdw").TextOrEmpty() != row.Field("dw").TextOrEmpty()),
        ratio_(row.Field("clb").NumberOr(0)) {}

  /// Failure for a division by a ratio of 0.
  std::string operator()(double quantity, double price) const {
    if (divided_ && ratio_ == 0) return "";
    return FormatNumber(quantity * (divided_ ? price / ratio_ : price), "0.00");
  }

 private:
  bool divided_;
  double ratio_;
};

}  // namespace

/// 药品盘点查询: what the stock take of one day found, in quantity and money.
class ek_YPPDCX : public Form, public DrugTaker {
 public:
  static constexpr const char* kName = "ek_YPPDCX";
  explicit ek_YPPDCX(AppContext& app)
      : Form(app.forms, kName, "药品盘点查询", WindowKind::kChild),
        drug(this, app, "Command4"),
        fpSpread1(this, "fpSpread1", Columns()),
        app_(app) {
    fpSpread1.SetReadOnly(true);
    Check1.click.Connect(this, &ek_YPPDCX::Check1_Click);
    TreeView1.node_click.Connect(this, &ek_YPPDCX::TreeView1_NodeClick);
  }

  DateBox S_D{this, "S_D", "盘点日期"};
  CheckBox Check1{this, "Check1", "单种药品查询"};
  DrugField drug;
  Button Command1{this, "Command1", "开始搜索(&S)", &ek_YPPDCX::Command1_Click};
  ChargeItemTree TreeView1{this};
  Grid fpSpread1;
  Button Command2{this, "Command2", "打印(&P)", &ek_YPPDCX::Command2_Click};
  Button Command5{this, "Command5", "导出数据到EXCEL", &ek_YPPDCX::Command5_Click};
  Button Command3{this, "Command3", "关闭(&Q)", &ek_YPPDCX::Command3_Click};

  Layout Arrange() const override {
    return Column({
        Row({S_D, Check1, drug.Arrange(), Command1, Space()}),
        SplitAcross({Layout(TreeView1).Stretch(1), Layout(fpSpread1).Stretch(5)}),
        Row({Space(), Command2, Command5, Command3}),
    });
  }

  void FillD_Form(const std::string& code) override;

 protected:
  void Load() override;

 private:
  Statement CountStatement() const;
  void ShowRows();

  void Check1_Click();
  void Command1_Click();
  void Command2_Click() { PrintTrapped(app_, fpSpread1, "药品盘点查询报告"); }
  void Command3_Click() { Unload(); }
  void Command5_Click() { ExportTrapped(app_, fpSpread1); }
  void TreeView1_NodeClick(int node);

  AppContext& app_;
  Recordset counts_;  ///< stays open: the tree narrows it
};

void ek_YPPDCX::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
  drug.SetEnabled(false);
  Trapped(app_, [this] {
    TreeView1.Build(app_, Statement("select sItemName from eK_ChargeItem where ypbz=1 "), {"key", ""});
  });
}

void ek_YPPDCX::FillD_Form(const std::string& code) {
  Trapped(app_, [&] { drug.Take(code); });
}

void ek_YPPDCX::Check1_Click() {
  drug.SetEnabled(Check1.Checked());
  if (!Check1.Checked()) drug.Clear();
}

Statement ek_YPPDCX::CountStatement() const {
  const std::string day = FormatDate(S_D.Value(), "yyyy-mm-dd");
  const Statement counts =
      "select b.zxdw,b.clb,B.sfxm,a.ypbm,a.zmkc,a.sjkc,b.ypmc,b.gg,a.dw,b.sccj,a.lsj,b.pfj from yf_pdmx a left join "
      "yf_ypml b on a.ypbm=b.ypbm where a.kfbm like" +
      Quoted(app_.KFMC, "库房") + " and  a.pdrq between" + Quoted(day + " 00:00:00") + " and " +
      Quoted(day + " 23:59:59");
  if (!Check1.Checked()) return counts + " Order by id ";
  return counts + " And a.ypbm=" + Quoted(drug.BM) + " Order by id";
}

void ek_YPPDCX::Command1_Click() {
  if (!HasRight(app_, "YPGL_YPPDCX")) return CheckRight(app_, "YPGL_YPPDCX");
  Trapped(app_, [this] {
    OpenRs(app_, counts_, CountStatement());
    ShowRows();
  });
}

void ek_YPPDCX::ShowRows() {
  const RedrawPause pause(fpSpread1);
  fpSpread1.SetMaxRows(0);
  fpSpread1.SetMaxRows(counts_.RecordCount());
  if (counts_.RecordCount() > 0) counts_.MoveFirst();
  for (int row = 1; !counts_.Eof(); counts_.MoveNext(), ++row) {
    const auto text = [&](const char* field) { return counts_.Field(field).TextOrEmpty(); };
    const auto figure = [&](const char* field) { return counts_.Field(field).NumberOr(0); };
    const auto show = [&](int column, std::string shown) { fpSpread1.SetText(row, column, std::move(shown)); };
    const double difference = figure("sjkc") - figure("zmkc");
    const Valuer value(counts_);
    show(col::kCode, text("ypbm"));
    show(col::kDrug, text("ypmc"));
    show(col::kSpecification, text("gg"));
    show(col::kUnit, text("dw"));
    show(col::kOrigin, text("sccj"));
    show(col::kPrice, counts_.Field("lsj").Format("0.00"));
    show(col::kBook, NumberText(figure("zmkc")));
    show(col::kCounted, NumberText(figure("sjkc")));
    show(col::kCountedIn, text(figure("clb") > 1 ? "zxdw" : "dw"));
    show(col::kDifference, FormatNumber(difference, "0.00"));
    show(col::kDifferenceAtRetail, value(difference, figure("lsj")));
    show(col::kValue, value(figure("sjkc"), figure("lsj")));
    show(col::kPurchasePrice, counts_.Field("pfj").Format("0.00"));
    show(col::kDifferenceAtPurchase, value(difference, figure("pfj")));
    show(col::kChargeItem, text("sfxm"));
  }
}

/// The root's text is no charge item: its filter lets every row pass.
void ek_YPPDCX::TreeView1_NodeClick(int node) {
  if (!counts_.IsOpen()) {
    app_.desktop.MsgBox({"请先查询出盘点数据后才能分类查看。", box::kInformation, "系统提示"});
    return;
  }
  Trapped(app_, [&] {
    const std::string& item = TreeView1.TextOf(node);
    counts_.Filter(std::string("SFXM") + (item == ChargeItemTree::kAllItems ? "<>'" : "='") + item + "'");
    ShowRows();
  });
}

const Screen kStockTakeQuery = ChildScreen<ek_YPPDCX>();

}  // namespace luming
