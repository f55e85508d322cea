#pragma once

#include <string>
#include <utility>

#include "screen/control.h"

namespace luming {

/// Shows how far long work has come.
class ProgressBar : public Control {
 public:
  ProgressBar(Form* form, std::string name) : Control(form, ControlKind::kProgressBar, std::move(name), {}) {}
  double Share() const { return share_; }  ///< from 0 to 1
  void SetShare(double share);
  bool CanFocus() const override { return false; }

 private:
  double share_ = 0;
};

}  // namespace luming
