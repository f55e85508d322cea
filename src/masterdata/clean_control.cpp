#include "masterdata/clean_control.h"

#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/forms.h"
#include "screen/text_box.h"

namespace luming {

namespace {

enum class Tagged { kSurvives, kIsClearedToo };

void ClearList(ComboBox& list) {
  if (list.Style() == ComboStyle::kFixed) {
    list.SetListIndex(-1);
  } else {
    list.SetText("");
  }
}

void ShowFirstOrNothing(ComboBox& list) {
  if (list.Style() == ComboStyle::kFixed && !list.Items().empty()) {
    list.SetListIndex(0);
  } else {
    ClearList(list);
  }
}

void Clear(Form& form, Tagged tagged) {
  const DateTime today = form.Registry().clock().Today();
  for (Control* control : form.Controls()) {
    const bool kept = tagged == Tagged::kSurvives && !control->Tag().empty();
    if (auto* date = dynamic_cast<DateBox*>(control)) {
      date->SetValue(today);
    } else if (auto* list = dynamic_cast<ComboBox*>(control); list && !kept) {
      tagged == Tagged::kSurvives ? ShowFirstOrNothing(*list) : ClearList(*list);
    } else if (auto* text = dynamic_cast<TextBox*>(control); text && !kept) {
      text->SetText("");
    }
  }
}

bool TakesBackground(ControlKind kind) {
  switch (kind) {
    case ControlKind::kLabel:
    case ControlKind::kCheckBox:
    case ControlKind::kOptionButton:
    case ControlKind::kPicture:
    case ControlKind::kProgressBar:
    case ControlKind::kToolBar:
      return true;
    default:
      return false;
  }
}

}  // namespace

void CleanControl::CleanControlText(Form& form) {
  Clear(form, Tagged::kSurvives);
}

void CleanControl::Cls_ALL(Form& form) {
  Clear(form, Tagged::kIsClearedToo);
}

void CleanControl::SetControlColor(Form& form) {
  constexpr Colour kPaleBlue = 0xC0DDFA;
  for (Control* control : form.Controls()) {
    if (TakesBackground(control->Kind()) && control->Tag() != "0") control->SetBackColour(kPaleBlue);
  }
}

}  // namespace luming
