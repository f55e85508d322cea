#include "masterdata/dictionary_links.h"

#include <map>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/data_dictionary.h"
#include "masterdata/screens.h"
#include "screen/grid_init.h"

namespace luming {

namespace {

enum LinkColumn { kControl = 1, kCaption, kDictionary, kState, kId, kCode };
constexpr const char* kMarked = "修改";

}  // namespace

Frm_LinkZD::Frm_LinkZD(AppContext& app) : Form(app.forms, kName, "窗体与字典关联设置", WindowKind::kDialog), app_(app) {
  fpSpread1.SetRowMode(true);
  TreeView1.node_click.Connect(this, &Frm_LinkZD::TreeView1_NodeClick);
  fpSpread1.double_click.Connect(this, &Frm_LinkZD::fpSpread1_DblClick);
  fpSpread1.key_down.Connect(this, &Frm_LinkZD::fpSpread1_KeyDown);
}

Layout Frm_LinkZD::Arrange() const {
  return Column({
      SplitAcross({Layout(TreeView1).Stretch(2), Layout(fpSpread1).Height(22).Stretch(5)}),
      Row({Space(), Command1, Command2}),
  });
}

void Frm_LinkZD::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
  Trapped(app_, [this] { BuildTree(); });
}

/// A node's key is the name of its screen; what only groups screens has none.
void Frm_LinkZD::BuildTree() {
  Recordset rows;
  OpenRs(app_, rows, "Select Lavel,Sname,ID,PID,Ename from ZD_Tabel order by lavel ");
  std::map<std::string, int> nodes;
  for (; !rows.Eof(); rows.MoveNext()) {
    const auto parent = nodes.find(rows.Field("PID").TextOrEmpty());
    const int node = TreeView1.AddNode(parent == nodes.end() ? -1 : parent->second, rows.Field("Sname").TextOrEmpty(),
                                       rows.Field("Ename").TextOrEmpty());
    nodes[rows.Field("ID").TextOrEmpty()] = node;
    TreeView1.SetExpanded(node, true);
  }
  CloseRs(rows);
}

void Frm_LinkZD::TreeView1_NodeClick(int node) {
  const std::string form = TreeView1.Nodes()[static_cast<std::size_t>(node)].key;
  Trapped(app_, [&] {
    Recordset rows;
    OpenRs(app_, rows,
           "Select A.id,A.ControlEname,A.ControlCname,B.DMMC  From ZD_LinkTable A left join DAGL_ZD B ON "
           "A.LINKZD=B.DM Where A.FormName Like" +
               Quoted(form) + " Order by A.XH");
    fpSpread1.SetMaxRows(0);
    fpSpread1.Fill(std::move(rows), {{"ControlEname"}, {"ControlCname"}, {"DMMC"}, {""}, {"id"}});
    fpSpread1.SetActiveCell(1, 1);
  });
}

void Frm_LinkZD::fpSpread1_DblClick(int row, int) {
  ChooseDictionary(row);
}

void Frm_LinkZD::fpSpread1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  ChooseDictionary(fpSpread1.ActiveRow());
}

void Frm_LinkZD::ChooseDictionary(int row) {
  if (row < 1 || row > fpSpread1.MaxRows()) return;
  auto& dictionaries = app_.forms.Get<sjzd>(app_);
  dictionaries.LinkTo(fpSpread1.Text(row, kCaption));
  dictionaries.ShowModal();
  if (!dictionaries.Taken()) return;
  fpSpread1.SetText(row, kDictionary, dictionaries.Taken()->name);
  fpSpread1.SetText(row, kCode, dictionaries.Taken()->code);
  fpSpread1.SetText(row, kState, kMarked);
}

void Frm_LinkZD::Command1_Click() {
  bool saved = false;
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    if (fpSpread1.Text(row, kState) != kMarked) continue;
    if (!ExecSql(app_, "Update ZD_LinkTable SET LinkZD=" + Quoted(fpSpread1.Text(row, kCode), {"字典代码", row}) +
                           " Where ID=" + Bare(fpSpread1.Text(row, kId)))) {
      return;
    }
    fpSpread1.SetText(row, kState, "");
    saved = true;
  }
  if (saved) {
    app_.desktop.MsgBox({"保存成功", box::kInformation, "信息"});
  } else {
    app_.desktop.MsgBox({"没有可以被保存的数据", box::kInformation, "提示"});
  }
}

const Screen kDictionaryLinks = ModalScreen<Frm_LinkZD>();

}  // namespace luming
