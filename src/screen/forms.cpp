#include "screen/forms.h"

#include <algorithm>
#include <exception>

#include "util/text.h"

namespace luming {

Forms::~Forms() {
  while (!forms_.empty()) {
    desktop_.Close(*forms_.back());
    forms_.pop_back();
  }
}

Form* Forms::Find(std::string_view name) const {
  const auto found = std::find_if(forms_.begin(), forms_.end(),
                                  [&](const auto& form) { return EqualsIgnoreCase(form->Name(), name); });
  return found == forms_.end() ? nullptr : found->get();
}

std::vector<Form*> Forms::All() const {
  std::vector<Form*> all;
  for (const auto& form : forms_) all.push_back(form.get());
  return all;
}

template <class Matches>
Form* Forms::LastShown(Matches matches) const {
  const auto found = std::find_if(shown_.rbegin(), shown_.rend(), matches);
  return found == shown_.rend() ? nullptr : *found;
}

Form* Forms::ActiveChild() const {
  return LastShown([](const Form* form) { return form->Kind() == WindowKind::kChild; });
}

Form* Forms::Top() const {
  return LastShown([](const Form*) { return true; });
}

void Forms::BroughtToFront(Form& form) {
  std::erase(shown_, &form);
  auto place = shown_.end();
  // The main window holds its children: it never covers them.
  if (form.Kind() == WindowKind::kMain) {
    place = std::find_if(shown_.begin(), shown_.end(), [](Form* each) { return each->Kind() == WindowKind::kChild; });
  }
  shown_.insert(place, &form);
}

void Forms::AppearedBeside(Form& form) {
  shown_.insert(shown_.begin(), &form);
}

void Forms::UnloadAll() {
  HandlerScope scope(*this);
  std::exception_ptr first;
  while (!forms_.empty()) {
    Form& form = *forms_.back();
    try {
      form.CloseNow();
    } catch (...) {
      if (!first) first = std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

Forms::HandlerScope::~HandlerScope() {
  if (--forms_.depth_ > 0) return;
  const auto gone = std::move(forms_.closed_);
  forms_.closed_.clear();
}

void Forms::Own(std::unique_ptr<Form> form) {
  forms_.push_back(std::move(form));
}

void Forms::Release(Form& form) {
  WasHidden(form);
  const auto found = std::find_if(forms_.begin(), forms_.end(), [&](const auto& each) { return each.get() == &form; });
  if (found == forms_.end()) return;
  closed_.push_back(std::move(*found));
  forms_.erase(found);
}

void Forms::WasHidden(Form& form) {
  std::erase(shown_, &form);
}

}  // namespace luming
