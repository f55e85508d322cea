#include <algorithm>
#include <array>

#include "screen/caption.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/forms.h"
#include "screen/grid.h"
#include "screen/main_frame.h"
#include "screen/text_box.h"
#include "screen/tool_bar.h"
#include "screen/tree.h"
#include "script/script_driver.h"
#include "script/script_names.h"
#include "util/date_text.h"
#include "util/text.h"

namespace luming {
namespace {

struct KeyName {
  std::string_view name;
  int code;
};

constexpr std::array kKeyNames = {
    KeyName{"Backspace", key::kBackspace},
    KeyName{"Tab", key::kTab},
    KeyName{"Enter", key::kEnter},
    KeyName{"Esc", key::kEsc},
    KeyName{"Space", key::kSpace},
    KeyName{"PageUp", key::kPageUp},
    KeyName{"PageDown", key::kPageDown},
    KeyName{"End", key::kEnd},
    KeyName{"Home", key::kHome},
    KeyName{"Left", key::kLeft},
    KeyName{"Up", key::kUp},
    KeyName{"Right", key::kRight},
    KeyName{"Down", key::kDown},
    KeyName{"Insert", key::kInsert},
    KeyName{"Delete", key::kDelete},
};

bool TakeModifier(std::string& name, std::string_view modifier) {
  if (name.size() <= modifier.size() || !EqualsIgnoreCase(name.substr(0, modifier.size()), modifier)) return false;
  name.erase(0, modifier.size());
  return true;
}

/// Letters and digits by their upper-case code; every other character reaches the program only as what it types.
int CodeOf(char32_t character) {
  if (character >= U'a' && character <= U'z') return static_cast<int>(character - U'a' + U'A');
  const bool plain = (character >= U'A' && character <= U'Z') || (character >= U'0' && character <= U'9');
  if (plain || character == U' ') return static_cast<int>(character);
  return 0;
}

KeyEvent KeyNamed(const std::string& text) {
  KeyEvent event;
  std::string name = text;
  for (bool more = true; more;) {
    more = false;
    for (const auto& [modifier, flag] :
         {std::pair<std::string_view, bool*>{"Ctrl+", &event.ctrl}, {"Alt+", &event.alt}, {"Shift+", &event.shift}}) {
      if (TakeModifier(name, modifier)) *flag = more = true;
    }
  }
  const auto known = std::find_if(kKeyNames.begin(), kKeyNames.end(),
                                  [&](const KeyName& each) { return EqualsIgnoreCase(each.name, name); });
  if (known != kKeyNames.end()) {
    event.code = known->code;
  } else if (name.size() == 1) {
    event.code = CodeOf(static_cast<unsigned char>(name[0]));
  } else if (name.size() <= 3 && (name[0] == 'F' || name[0] == 'f')) {
    const int number = NumberFrom(1, name.substr(1), "key");
    if (number <= 12) event.code = key::kF1 + number - 1;
  }
  if (event.code == 0) throw ScriptProblem{0, "\"" + text + "\" is no key"};
  return event;
}

/// A key and, when nothing took it, what it types.
void Press(Form& form, KeyEvent event, char32_t character) {
  if (form.UserKey(event) || form.IsUnloaded() || character == 0) return;
  if (!event.ctrl && !event.alt) form.UserType(character);
}

void TypeText(Form& form, const std::string& text) {
  if (text.empty()) Press(form, {.code = key::kDelete}, 0);
  for (std::size_t at = 0; at < text.size() && !form.IsUnloaded();) {
    const char32_t character = NextCodePoint(text, at);
    if (character == U'\n') {
      Press(form, {.code = key::kEnter}, 0);
    } else {
      const bool shift = character >= U'A' && character <= U'Z';
      Press(form, {.code = CodeOf(character), .shift = shift}, character);
    }
  }
}

void DemandWritable(const Control& control) {
  if (control.ReadOnly()) throw ScriptProblem{0, "\"" + control.Name() + "\" is read-only"};
}

int EntryOf(const ComboBox& combo, const std::string& text) {
  const auto& items = combo.Items();
  const auto found = std::find(items.begin(), items.end(), text);
  if (found == items.end()) {
    throw ScriptProblem{0, combo.Name() + " has no entry \"" + text + "\"; it has: " + Join(items, ", ")};
  }
  return static_cast<int>(found - items.begin());
}

const MenuEntry* EntryNamed(const std::vector<MenuEntry>& entries, const std::string& caption) {
  for (const MenuEntry& entry : entries) {
    if (entry.children.empty() && PlainCaption(entry.caption) == PlainCaption(caption)) return &entry;
    if (const MenuEntry* inside = EntryNamed(entry.children, caption)) return inside;
  }
  return nullptr;
}

int NodeNamed(const Tree& tree, const std::string& text) {
  int found = -1;
  for (const TreeNode& node : tree.Nodes()) {
    if (node.removed || node.text != text) continue;
    if (found >= 0) throw ScriptProblem{0, tree.Name() + " has several nodes \"" + text + "\""};
    found = node.id;
  }
  if (found < 0) throw ScriptProblem{0, tree.Name() + " has no node \"" + text + "\""};
  return found;
}

int FirstVisibleCol(const Grid& grid) {
  int col = 1;
  while (col < grid.MaxCols() && grid.ColumnHidden(col)) ++col;
  return col;
}

/// The cell of the row that a click of the operator meets: the column where the grid is, as far as it can be seen.
int ColOfClick(const Grid& grid) {
  return grid.ActiveCol() > 0 && !grid.ColumnHidden(grid.ActiveCol()) ? grid.ActiveCol() : FirstVisibleCol(grid);
}

}  // namespace

template <class T>
T& ScriptDriver::ActingAs(const std::string& name, std::string_view kind) const {
  if (auto* control = dynamic_cast<T*>(&ControlForActing(name))) return *control;
  throw ScriptProblem{0, "\"" + name + "\" is no " + std::string(kind)};
}

Grid& ScriptDriver::GridForActing(const std::string& name) const {
  return ActingAs<Grid>(name, "grid");
}

void ScriptDriver::Home(const ScriptStep& step) {
  host_.SetHome(step.arguments[0]);
}

void ScriptDriver::SetClock(const ScriptStep& step) {
  const std::string& text = step.arguments[0];
  const std::optional<DateTime> moment = ParseDate(text, DateTime());
  if (!moment || moment->Date() == DateTime()) throw ScriptProblem{0, "\"" + text + "\" is no date"};
  host_.SetClock(*moment);
}

void ScriptDriver::RunSql(const ScriptStep& step) {
  host_.RunBeside(step.arguments[0]);
}

void ScriptDriver::WriteSetting(const ScriptStep& step) {
  host_.WriteSetting(step.arguments[0], step.arguments[1], step.arguments[2]);
}

void ScriptDriver::AddressForm(const ScriptStep& step) {
  Form& form = ShownForm(step.arguments[0]);
  // What waits behind a box or a modal form is looked at where it stands.
  if (!IsAsked() && !IsBehindModal(form) && form.Kind() != WindowKind::kMain) form.Show();
  addressed_ = form.Name();
  above_ = OpenForms().Top()->Serial();
}

void ScriptDriver::Start(const ScriptStep& step) {
  host_.Start(step.arguments.empty() ? std::string() : step.arguments[0]);
}

void ScriptDriver::Command(const ScriptStep& step) {
  const int id = NumberFrom(1, step.arguments[0], "command");
  MainFrame& frame = MainWindow();
  DemandInFront(frame);
  if (!frame.StateOf(id).enabled) throw ScriptProblem{0, "command " + step.arguments[0] + " is unknown or disabled"};
  const Forms::HandlerScope scope(frame.Registry());
  host_.ExecuteCommand(id);
}

void ScriptDriver::Type(const ScriptStep& step) {
  Control& control = ControlForActing(step.arguments[0]);
  Form& form = control.Owner();
  auto* box = dynamic_cast<TextBox*>(&control);
  auto* combo = dynamic_cast<ComboBox*>(&control);
  auto* date = dynamic_cast<DateBox*>(&control);
  if (!box && !combo && !date) throw ScriptProblem{0, "\"" + step.arguments[0] + "\" takes no typed text"};
  DemandWritable(control);
  const Forms::HandlerScope scope(form.Registry());
  form.UserFocus(control);
  if (form.IsUnloaded() || !control.HasFocus()) throw ScriptProblem{0, "\"" + control.Name() + "\" gets no focus"};
  if (box) box->SelectAll();
  if (combo) combo->SelectAll();
  if (date) date->SelectAll();
  TypeText(form, step.arguments[1]);
}

void ScriptDriver::Put(const ScriptStep& step) {
  Control& control = ControlForActing(step.arguments[0]);
  const std::string& text = step.arguments[1];
  DemandWritable(control);
  const Forms::HandlerScope scope(control.Owner().Registry());
  if (auto* box = dynamic_cast<TextBox*>(&control)) return box->SetText(text);
  if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    return combo->Style() == ComboStyle::kFree ? combo->SetText(text) : combo->SetListIndex(EntryOf(*combo, text));
  }
  auto* date = dynamic_cast<DateBox*>(&control);
  if (!date) throw ScriptProblem{0, "\"" + step.arguments[0] + "\" takes no text"};
  const std::optional<DateTime> value = ParseDate(text, OpenForms().clock().Today());
  if (!value) throw ScriptProblem{0, "\"" + text + "\" is no date"};
  date->SetValue(*value);
}

void ScriptDriver::Choose(const ScriptStep& step) {
  auto& combo = ActingAs<ComboBox>(step.arguments[0], "list");
  DemandWritable(combo);
  const int entry = EntryOf(combo, step.arguments[1]);
  const Forms::HandlerScope scope(combo.Owner().Registry());
  combo.Owner().UserFocus(combo);
  if (!combo.Owner().IsUnloaded()) combo.UserChoose(entry);
}

void ScriptDriver::Tick(const ScriptStep& step) {
  Control& control = ControlForActing(step.arguments[0]);
  const std::string& wanted = step.arguments[1];
  if (wanted != "on" && wanted != "off") throw ScriptProblem{0, "\"" + wanted + "\" is neither on nor off"};
  const bool ticks = control.Kind() == ControlKind::kCheckBox || control.Kind() == ControlKind::kOptionButton;
  if (!ticks) throw ScriptProblem{0, "\"" + step.arguments[0] + "\" is neither a check box nor an option"};
  if (ValueOf(control) == wanted) return;
  const bool clears_option = control.Kind() == ControlKind::kOptionButton && wanted == "off";
  if (clears_option) throw ScriptProblem{0, "an option is cleared by setting another one"};
  control.Owner().UserClick(control);
}

void ScriptDriver::Focus(const ScriptStep& step) {
  Control& control = ControlForActing(step.arguments[0]);
  if (!control.CanFocus()) throw ScriptProblem{0, "\"" + step.arguments[0] + "\" takes no focus"};
  control.Owner().UserFocus(control);
}

void ScriptDriver::Key(const ScriptStep& step) {
  const KeyEvent event = KeyNamed(step.arguments[0]);
  Form& form = FormForActing();
  const std::string& name = step.arguments[0];
  const Forms::HandlerScope scope(form.Registry());
  const bool types = name.size() == 1 || event.code == key::kSpace;
  const char typed = event.code == key::kSpace ? ' ' : name[0];
  Press(form, event, types ? static_cast<unsigned char>(typed) : U'\0');
}

void ScriptDriver::Click(const ScriptStep& step) {
  Control& control = ControlForActing(step.arguments[0]);
  control.Owner().UserClick(control);
}

void ScriptDriver::Tool(const ScriptStep& step) {
  Form& form = FormForActing();
  const std::string caption = PlainCaption(step.arguments[0]);
  for (Control* control : form.Controls()) {
    auto* bar = dynamic_cast<ToolBar*>(control);
    if (!bar || !bar->Visible() || !bar->Enabled()) continue;
    for (const ToolButton& button : bar->Buttons()) {
      if (PlainCaption(button.caption) != caption && button.key != caption) continue;
      if (!button.enabled) throw ScriptProblem{0, "the tool \"" + caption + "\" is disabled"};
      const std::string pressed = button.key;
      return bar->UserPress(pressed);
    }
  }
  if (auto* frame = dynamic_cast<MainFrame*>(&form)) {
    if (const MenuEntry* entry = EntryNamed(frame->ToolBarButtons(), caption)) {
      if (!frame->StateOf(entry->id).enabled) throw ScriptProblem{0, "the tool \"" + caption + "\" is disabled"};
      const Forms::HandlerScope scope(frame->Registry());
      return frame->Execute(entry->id);
    }
  }
  throw ScriptProblem{0, "form " + form.Name() + " has no tool \"" + caption + "\""};
}

void ScriptDriver::ClickRow(const ScriptStep& step) {
  Grid& grid = GridForActing(step.arguments[0]);
  grid.UserClickCell(RowFrom(1, grid, step.arguments[1]), ColOfClick(grid));
}

void ScriptDriver::OpenRow(const ScriptStep& step) {
  Grid& grid = GridForActing(step.arguments[0]);
  const int row = RowFrom(1, grid, step.arguments[1]);
  const Forms::HandlerScope scope(grid.Owner().Registry());
  grid.UserClickCell(row, ColOfClick(grid));
  if (!grid.Owner().IsUnloaded() && grid.ActiveRow() == row) grid.UserDoubleClick(row, grid.ActiveCol());
}

void ScriptDriver::EnterRow(const ScriptStep& step) {
  Grid& grid = GridForActing(step.arguments[0]);
  const int row = RowFrom(1, grid, step.arguments[1]);
  Form& form = grid.Owner();
  const Forms::HandlerScope scope(form.Registry());
  form.UserFocus(grid);
  if (form.IsUnloaded()) return;
  grid.UserActivate(row, ColOfClick(grid));
  if (!form.IsUnloaded() && grid.ActiveRow() == row) form.UserKey({.code = key::kEnter});
}

void ScriptDriver::RightClickRow(const ScriptStep& step) {
  Grid& grid = GridForActing(step.arguments[0]);
  grid.UserRightClick(RowFrom(1, grid, step.arguments[1]), ColOfClick(grid));
}

void ScriptDriver::RightClickTab(const ScriptStep& step) {
  MainFrame& frame = MainWindow();
  DemandInFront(frame);
  Form& form = ShownForm(step.arguments[0]);
  if (form.Kind() != WindowKind::kChild) throw ScriptProblem{0, "form " + form.Name() + " is no tab"};
  const Forms::HandlerScope scope(frame.Registry());
  frame.Workspace_RClick(&form);
}

void ScriptDriver::EditCell(const ScriptStep& step) {
  Grid& grid = GridForActing(step.arguments[0]);
  const int row = RowFrom(1, grid, step.arguments[1]);
  const int col = ColumnNamed(grid, step.arguments[2]);
  const std::string cell = grid.Name() + " " + step.arguments[1] + " " + step.arguments[2];
  if (grid.ColumnHidden(col)) throw ScriptProblem{0, "the cell " + cell + " is hidden"};
  Form& form = grid.Owner();
  const Forms::HandlerScope scope(form.Registry());
  form.UserFocus(grid);
  if (!form.IsUnloaded()) grid.UserActivate(row, col);
  const bool there = !form.IsUnloaded() && grid.ActiveRow() == row && grid.ActiveCol() == col;
  if (!there || !grid.UserEdit(row, col, step.arguments[3])) {
    throw ScriptProblem{0, "the cell " + cell + " cannot be edited so"};
  }
}

void ScriptDriver::ClickNode(const ScriptStep& step) {
  auto& tree = ActingAs<Tree>(step.arguments[0], "tree");
  tree.UserSelect(NodeNamed(tree, step.arguments[1]));
}

void ScriptDriver::CloseWindow(const ScriptStep&) {
  FormForActing().UserClose();
}

void ScriptDriver::AnswerBox(const ScriptStep& step) {
  const Box* box = probe_.OpenBox();
  if (!box) throw ScriptProblem{0, "no box is open"};
  const std::string& wanted = step.arguments[0];
  if (wanted == "default") return probe_.AnswerBox(DefaultAnswer(box->style));
  constexpr std::array kNames = {std::pair{"yes", Answer::kYes}, std::pair{"no", Answer::kNo},
                                 std::pair{"ok", Answer::kOk}, std::pair{"cancel", Answer::kCancel}};
  const std::vector<Answer> offered = AnswersOf(box->style);
  for (const auto& [name, answer] : kNames) {
    if (wanted == name && std::ranges::count(offered, answer) > 0) return probe_.AnswerBox(answer);
  }
  throw ScriptProblem{0, "the box \"" + box->title + "\" has no button \"" + wanted + "\""};
}

void ScriptDriver::AnswerFile(const ScriptStep& step) {
  if (!probe_.OpenFileDialog()) throw ScriptProblem{0, "no file dialog is open"};
  if (step.arguments[0] == "cancel") return probe_.AnswerFileDialog(std::nullopt);
  probe_.AnswerFileDialog(step.arguments[0]);
}

void ScriptDriver::AnswerPopUp(const ScriptStep& step) {
  const std::vector<MenuEntry>* entries = probe_.OpenPopUp();
  if (!entries) throw ScriptProblem{0, "no pop-up is open"};
  if (step.arguments[0] == "cancel") return probe_.AnswerPopUp(std::nullopt);
  const MenuEntry* entry = EntryNamed(*entries, step.arguments[0]);
  if (!entry) throw ScriptProblem{0, "the pop-up has no entry \"" + step.arguments[0] + "\""};
  probe_.AnswerPopUp(entry->id);
}

}  // namespace luming
