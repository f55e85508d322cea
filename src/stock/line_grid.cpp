#include "stock/line_grid.h"

#include <algorithm>
#include <utility>

#include "frame/gateway.h"
#include "output/grid_routines.h"
#include "util/whole_file.h"

namespace luming {

Box StandsAlready(const std::string& name, int row) {
  return {"收费项目< " + name + " >在第" + std::to_string(row) + "行已存在!", box::kInformation, "错误"};
}

LineGrid::LineGrid(Form* form, AppContext& app, std::vector<GridColumn> columns, const LineHabits& habits)
    : Grid(form, "fpSpread1", std::move(columns)), app_(app), habits_(habits) {}

void LineGrid::NewGridRow() {
  SetMaxRows(MaxRows() + 1);
  SetActiveCell(MaxRows(), 1);
}

void LineGrid::CheckDupItem(const std::string& code, bool& duplicate) {
  for (int row = 1; row <= MaxRows(); ++row) {
    if (Text(row, 1) != code) continue;
    app_.desktop.MsgBox(StandsAlready(Text(row, 2), row));
    duplicate = true;
    return;
  }
}

int LineGrid::StartLine(const ItemPicker& picker) {
  if (picker.Results().MaxRows() == 0) return 0;
  RemoveTotal();
  const std::string code = picker.ActiveCode();
  if (code.empty()) return 0;
  bool duplicate = false;
  CheckDupItem(code, duplicate);
  if (duplicate && habits_.duplicates == Duplicates::kRefused) return 0;
  NewGridRow();
  SetText(MaxRows(), 1, code);
  return MaxRows();
}

void LineGrid::FinishLine(ItemPicker& picker) {
  constexpr int kInView = 5;
  picker.AwaitNext();
  if (habits_.scroll == ScrollTo::kLastRow) {
    SetTopRow(MaxRows());
  } else if (MaxRows() >= kInView) {
    SetTopRow(std::max(1, MaxRows() - kInView));
  }
  AddTotal();
}

void LineGrid::CancelLine() {
  GridDelRow(*this, MaxRows());
}

void LineGrid::RemoveTotal() {
  RemoveTotalRow(1, kTotalCaption, *this);
}

void LineGrid::AddTotal() {
  if (!habits_.summed.empty()) GridSumRow(*this, 1, habits_.summed);
}

void LineGrid::DeleteChosenRow() {
  GridDelRow(*this, ActiveRow());
  switch (habits_.after_delete) {
    case AfterDelete::kNothing:
      break;
    case AfterDelete::kSumThenRemoveTotals:
      GridSumRow(*this, 1, habits_.resummed);
      RemoveTotal();
      break;
    case AfterDelete::kRemoveTotalsThenSum:
      RemoveTotal();
      GridSumRow(*this, 1, habits_.resummed);
      break;
  }
}

void LineGrid::Tell(const std::string& text, int icon) {
  app_.desktop.MsgBox({text, icon, "系统提示"});
}

void LineGrid::Park() {
  Trapped(app_, [this] {
    if (MaxRows() == 0) {
      Tell("没有数据不能暂存", box::kWarning);
      return;
    }
    SaveToFile(TempSaveFile());
    Tell("药品暂存成功", box::kInformation);
  });
}

void LineGrid::LoadParked() {
  Trapped(app_, [this] {
    if (!FileExists(TempSaveFile())) {
      Tell("没有找到暂存内容", box::kWarning);
      return;
    }
    const Box question{"加载暂存药品会替换目前输入的药品，请确认？", box::kQuestion + box::kYesNo, "系统提示"};
    if (MaxRows() > 0 && app_.desktop.MsgBox(question) != Answer::kYes) return;
    LoadFromFile(TempSaveFile());
    // The file holds nothing but texts, and a parked total is a total again.
    for (int row = 1; row <= MaxRows(); ++row) {
      if (Text(row, 1) == kTotalCaption) MakeTotalRow(*this, row, 1);
    }
    Tell("加载成功", box::kInformation);
  });
}

std::filesystem::path LineGrid::TempSaveFile() const {
  return app_.AppPath / (app_.KFMC + habits_.parked_file);
}

}  // namespace luming
