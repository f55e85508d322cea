#include "masterdata/producers.h"

#include <array>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/producer_editor.h"
#include "masterdata/screens.h"
#include "screen/grid_init.h"
#include "screen/redraw_pause.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::array kShownFields = {"CDMC", "PYDM", "WBDM", "CDQC"};

}  // namespace

YPGL_CDWF::YPGL_CDWF(AppContext& app) : Form(app.forms, kName, "产地信息维护", WindowKind::kDialog), app_(app) {
  DataGrid1.SetRowMode(true);
  Search.change.Connect(this, &YPGL_CDWF::Search_Change);
}

Layout YPGL_CDWF::Arrange() const {
  return Column({
      Row({Search}),
      Layout(DataGrid1).Width(106).Height(20),
      Row({Com_XGH, Com_XG, Com_DEL, Space(), Com_TC}),
  });
}

void YPGL_CDWF::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(DataGrid1);
  OpenList(Statement("select * from YPGL_CDWF"));
}

void YPGL_CDWF::Search_Change() {
  const std::string text = Replace(Trim(Search.Text()), ";", "");
  OpenList("select * from YPGL_CDWF where pydm like " + Quoted(text + "%", Search.Caption()));
}

void YPGL_CDWF::OpenList(const Statement& statement) {
  producers = EditableRecordset();
  try {
    ConnectDb(app_);
    producers = EditableRecordset(app_.Cn, statement, {"YPGL_CDWF", "id"});
  } catch (const Failure& failure) {
    app_.desktop.MsgBox({"出错信息：" + failure.description(), box::kWarning, "系统提示"});
  }
  ShowRows();
}

void YPGL_CDWF::ShowRows() {
  const RedrawPause pause(DataGrid1);
  const int current = producers.AbsolutePosition();
  DataGrid1.SetMaxRows(producers.IsOpen() ? producers.RecordCount() : 0);
  for (int row = 1; row <= DataGrid1.MaxRows(); ++row) {
    producers.MoveTo(row);
    for (int col = 1; col <= static_cast<int>(kShownFields.size()); ++col) {
      const char* field = kShownFields[static_cast<std::size_t>(col) - 1];
      DataGrid1.SetText(row, col, producers.Field(field).TextOrEmpty());
    }
  }
  if (current > 0) {
    producers.MoveTo(current);
    DataGrid1.SetActiveCell(current, 1);
  }
}

bool YPGL_CDWF::TakeActiveRow() {
  if (DataGrid1.MaxRows() == 0) return false;
  producers.MoveTo(DataGrid1.ActiveRow());
  return true;
}

void YPGL_CDWF::OpenDialog(const std::string& caption) {
  auto& dialog = app_.forms.Get<YPGL_CDWFEDIT>(app_);
  dialog.SetCaption(caption);
  dialog.list = this;
  dialog.ShowModal();
}

void YPGL_CDWF::Com_XGH_Click() {
  OpenDialog(YPGL_CDWFEDIT::kAdding);
}

void YPGL_CDWF::Com_XG_Click() {
  if (TakeActiveRow()) {
    OpenDialog(YPGL_CDWFEDIT::kChanging);
  } else {
    app_.desktop.MsgBox({"请先选择你要修改的药品?", box::kInformation, "提示"});
  }
}

void YPGL_CDWF::Com_DEL_Click() {
  if (!TakeActiveRow()) {
    app_.desktop.MsgBox({"没有药品可以删除！", box::kInformation, "提示"});
    return;
  }
  const Box question{"你确认要删除吗？删除后将不可恢复！", box::kQuestion + box::kYesNo, "请确认?"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  try {
    producers.Delete();
    ShowRows();
    app_.desktop.MsgBox({"删除成功！", box::kInformation, "提示"});
  } catch (const Failure&) {
    app_.desktop.MsgBox({"删除失败", box::kWarning, "系统提示"});
  }
}

const Screen kProducers = ModalScreen<YPGL_CDWF>();

}  // namespace luming
