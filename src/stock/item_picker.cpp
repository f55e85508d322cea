#include "stock/item_picker.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <string_view>

#include "frame/gateway.h"
#include "output/grid_routines.h"
#include "screen/redraw_pause.h"
#include "stock/drug_list.h"
#include "util/text.h"

namespace luming {

namespace {

struct Argument {
  std::string_view shown;
  std::string_view sent;
};

constexpr std::array kClasses = {Argument{"全部", "0"}, Argument{"药品", "1"}, Argument{"检查及治疗", "2"}};
constexpr std::array kModes = {Argument{"拼音码", "PYDM"}, Argument{"五笔码", "WBDM"}, Argument{"编码", "YPBM"}};

/// What stands for a list's text in the statement; empty for a text that the list does not offer.
template <class Arguments>
std::string_view Sent(const Arguments& arguments, std::string_view shown) {
  for (const Argument& argument : arguments) {
    if (argument.shown == shown) return argument.sent;
  }
  return {};
}

std::vector<std::string> ModeItems() {
  std::vector<std::string> items;
  for (const Argument& mode : kModes) items.emplace_back(mode.shown);
  return items;
}

Grid& OwnOrGiven(std::optional<Grid>& own, Grid* given, Form* form, const PickerSettings& settings) {
  if (given) return *given;
  return own.emplace(form, "fpSpread2", PickerGridColumns(settings));
}

}  // namespace

std::vector<GridColumn> PickerGridColumns(const PickerSettings& settings) {
  std::vector<GridColumn> made;
  for (const PickerColumn& column : settings.columns) made.push_back(GridColumn(column.caption).Holding(column.holds));
  return made;
}

ItemPicker::ItemPicker(Form* form, AppContext& app, const PickerSettings& settings, Grid* results)
    : PM(form, "PM", "品名(F3)", {.ime = Ime::kOff, .select_on_focus = true}),
      SFLB(form, "SFLB", "收费类别(F4)", {.items = {settings.item_class}, .selected = 0}),
      CXFS(form, "CXFS", settings.mode_caption, {.items = ModeItems()}),
      KCXS(form, "KCXS", settings.stock_filter_caption),
      form_(*form),
      app_(app),
      settings_(settings),
      results_(OwnOrGiven(fpSpread2_, results, form, settings)) {
  for (const PickerColumn& column : settings.columns) sources_.push_back({column.field, column.picture});
  PM.change.Connect(this, &ItemPicker::SearchStart);
  PM.key_down.Connect(this, &ItemPicker::PM_KeyDown);
  results_.key_down.Connect(this, &ItemPicker::Results_KeyDown);
  results_.double_click.Connect(this, &ItemPicker::Results_DoubleClick);
}

void ItemPicker::Load() {
  GridInit(results_);
  SetSearchType(app_, CXFS);
}

void ItemPicker::FormKeyDown(KeyEvent& event) {
  switch (event.code) {
    case key::kF2:
      if (settings_.f2 == F2Key::kToggles) KCXS.SetChecked(!KCXS.Checked());
      break;
    case key::kF3:
      PM.SetFocus();
      break;
    case key::kF4:
      SFLB.SetFocus();
      break;
    case key::kF5:
      CXFS.SetFocus();
      break;
    case key::kEnter:
      // The search text and the list give Enter a meaning of their own.
      if (settings_.enter == EnterKey::kWalks && !PM.HasFocus() && !results_.HasFocus()) SendTab(form_, event.code);
      break;
    default:
      break;
  }
}

void ItemPicker::PM_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  results_.SetActiveCell(1, 1);
  results_.SetRowMode(true);
  results_.SetFocus();
  event.handled = true;
}

void ItemPicker::Results_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  picked.Fire(PickedBy::kEnter);
  event.handled = true;
}

void ItemPicker::Results_DoubleClick(int, int) {
  picked.Fire(PickedBy::kDoubleClick);
}

Statement ItemPicker::SearchStatement() const {
  const bool drugs_in_stock = settings_.search == PickerSearch::kDrugsWithStock;
  const std::string item_class(drugs_in_stock ? "1" : Sent(kClasses, SFLB.Text()));
  const std::string column(Sent(kModes, CXFS.Text()));
  if (item_class.empty() || column.empty()) return {};
  const std::string text = Trim(Replace(PM.Text(), "'", "")) + "%";
  const bool in_stock = drugs_in_stock || KCXS.Checked();
  if (settings_.search == PickerSearch::kItems) {
    return "exec GET_YP_JC2 " + Quoted(item_class) + "," + Quoted(column) + "," + Quoted(text, PM.Caption()) +
           (in_stock ? " ,'1'" : ",'0'");
  }
  return "exec Get_YP_JCTestYK " + Quoted(item_class) + "," + Quoted(column) + "," + Quoted(text, PM.Caption()) +
         (in_stock ? " ,'1','1'," : ",'0','1',") + Quoted(app_.KFMC, "库房");
}

void ItemPicker::SearchStart() {
  try {
    Recordset rows;
    if (settings_.reading == PickerReading::kOpenRs) {
      OpenRs(app_, rows, SearchStatement());
    } else {
      if (!app_.Cn) throw StandardFailure(failure::kBadConnection);
      rows = app_.Cn->Execute(SearchStatement());
    }
    FillSearchGrid(rows);
  } catch (const Failure& failure) {
    Report(failure);
  }
}

void ItemPicker::RereadStock() {
  constexpr std::string_view kStock = "YKKCL";
  constexpr int kAtOnce = 500;
  const auto shown =
      std::ranges::find_if(settings_.columns, [&](const auto& each) { return EqualsIgnoreCase(each.field, kStock); });
  if (shown == settings_.columns.end()) return;
  const int column = static_cast<int>(shown - settings_.columns.begin()) + 1;
  try {
    const RedrawPause pause(results_);
    for (int first = 1; first <= results_.MaxRows(); first += kAtOnce) {
      const int last = std::min(first + kAtOnce - 1, results_.MaxRows());
      Statement codes;
      std::map<std::string, int, std::less<>> row_of;
      for (int row = first; row <= last; ++row) {
        const std::string code = results_.Text(row, 1);
        row_of.emplace(code, row);
        codes += (codes.empty() ? "" : ",") + Quoted(code, ValueSource{"编码", row});
      }
      Recordset stock = app_.Cn->Execute("Select YPBM,YKKCL From YF_YPML Where YPBM In(" + codes + ")");
      for (; !stock.Eof(); stock.MoveNext()) {
        const auto row = row_of.find(stock.Field(0).TextOrEmpty());
        if (row != row_of.end()) results_.SetText(row->second, column, stock.Field(1).Format(shown->picture));
      }
    }
  } catch (const Failure&) {
  }
}

void ItemPicker::FillSearchGrid(Recordset& rows) {
  if (fill.IsConnected()) {
    fill.Fire(rows);
  } else {
    const RedrawPause pause(results_);
    FillDrugList(results_, std::move(rows), sources_);
  }
}

void ItemPicker::Report(const Failure& failure) {
  if (settings_.reading == PickerReading::kOpenRs) {
    ShowDbError(app_, failure);
  } else {
    app_.desktop.MsgBox({"出错信息:" + failure.description(), box::kWarning, "提示"});
  }
}

std::string ItemPicker::ActiveCode() const {
  return results_.MaxRows() == 0 ? std::string() : results_.Text(results_.ActiveRow(), 1);
}

void ItemPicker::AwaitNext() {
  PM.SetFocus();
  PM.SelectAll();
}

Layout ItemPicker::SearchLine() const {
  return Row({Layout(PM).Stretch(1), Layout(SFLB).Width(12), Layout(CXFS).Width(10), KCXS});
}

Layout ItemPicker::Arrange() const {
  return Column({SearchLine(), results_});
}

}  // namespace luming
