#include "frame/windows.h"

#include <algorithm>
#include <string>
#include <vector>

#include "frame/main_window.h"

namespace luming {

void MaxChild(AppContext& app, std::string_view name) {
  if (Form* form = app.forms.Find(name)) app.desktop.Maximise(*form);
}

bool IsFormOpen(const AppContext& app, std::string_view name) {
  return app.forms.Find(name) != nullptr;
}

void CloseForms(AppContext& app, std::string_view keep, std::string_view second_keep, std::string_view caption) {
  // The arguments may be the texts of a form that goes away here.
  const std::string kept(keep);
  const std::string also_kept(second_keep.empty() ? mainfrm::kName : second_keep);
  const std::string kept_caption(caption);
  Forms::HandlerScope scope(app.forms);

  const auto stays = [&](const Form* form) {
    if (form->Name() == also_kept) return true;
    return !kept.empty() && form->Name() == kept && form->Caption() == kept_caption;
  };
  std::vector<const Form*> refused;
  const auto next = [&]() -> Form* {
    for (Form* form : app.forms.All()) {
      if (!stays(form) && std::ranges::find(refused, form) == refused.end()) return form;
    }
    return nullptr;
  };
  while (Form* form = next()) {
    if (!form->Unload()) refused.push_back(form);
  }
}

}  // namespace luming
