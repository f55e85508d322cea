#include "frame/input_method.h"

#include "frame/gateway.h"
#include "frame/screens.h"
#include "util/text.h"

namespace luming {

SetIme::SetIme(AppContext& app) : Form(app.forms, kName, "输入法设置", WindowKind::kDialog), app_(app) {}

Layout SetIme::Arrange() const {
  return Column({
      Fields(1, {Layout(srflb).Width(36), Layout(dqsyslf).Titled("当前使用输入法"), Combo1}),
      Row({Space(), Com_set, Command2}),
  });
}

void SetIme::Load() {
  Trapped(app_, [this] {
    FillList();
    ShowCurrent();
  });
  ShowSearchType();
}

void SetIme::FillList() {
  for (const KeyboardLayout& layout : app_.devices.GetKeyboardLayoutList()) {
    const std::string description = Trim(layout.description);
    srflb.AddItem(description.empty() ? "英语（美国）" : description);
    handles_.push_back(layout.handle);
  }
}

void SetIme::ShowCurrent() {
  const std::optional<KeyboardLayout> current = app_.devices.GetKeyboardLayout();
  const std::string description = current ? Trim(current->description) : "";
  dqsyslf.SetCaption(description.empty() ? "英文输入法" : description);
}

void SetIme::ShowSearchType() {
  try {
    Combo1.SetText(app_.SearchType);
  } catch (const Failure&) {
    // An operator without a search mode chooses one here.
  }
}

std::int32_t SetIme::ChosenHandle() const {
  const auto line = static_cast<std::size_t>(srflb.ListIndex());
  return line < handles_.size() ? handles_[line] : 0;
}

void SetIme::Com_set_Click() {
  if (Trim(srflb.Text()).empty()) {
    app_.desktop.MsgBox({"请先选择你要设置的输入法！", box::kInformation, "提示"});
    return;
  }
  Trapped(app_, [this] {
    app_.IME = ChosenHandle();
    app_.devices.ActivateKeyboardLayout(app_.IME);
    app_.SearchType = Combo1.Text();
    if (!ExecSql(app_, "Update UserDB set IME=" + Quoted(std::to_string(app_.IME)) + ",SearchType=" + Quoted(Combo1) +
                           " Where UserName=" + Quoted(app_.CurUser.GetUserName, "操作员"))) {
      return;
    }
    set_handle_ = app_.IME;
    app_.desktop.MsgBox({"输入法设置成功", box::kInformation, "提示"});
  });
}

void UseOperatorLayout(AppContext& app) {
  app.forms.operator_ime = [&app] {
    try {
      app.devices.ActivateKeyboardLayout(app.IME);
    } catch (const Failure&) {
      // Said nowhere: a box at every field would stop the work.
    }
  };
}

const Screen kInputMethod = ModalScreen<SetIme>();

}  // namespace luming
