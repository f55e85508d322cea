#pragma once

#include <string>

#include "screen/control.h"

namespace luming {

/// One of the options of its form that bear the same group name; setting one clears the others.
class OptionButton : public Control {
 public:
  OptionButton(Form* form, std::string name, std::string caption, std::string group = {}, bool chosen = false);
  bool Chosen() const { return chosen_; }
  void SetChosen(bool chosen);
  const std::string& Group() const { return group_; }
  Event<> click;
  void DefaultKey(KeyEvent& event) override;  ///< Space
  void UserClick() override;

 private:
  std::string group_;
  bool chosen_;
};

}  // namespace luming
