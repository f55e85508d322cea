#pragma once

namespace luming {

class Form;

enum class Ime { kUnchanged, kOff, kOperator };  ///< kOperator: the keyboard layout the operator chose

/// Switches to the operator's keyboard layout where a field asks for it; switching off is the view's.
void TakeIme(Form& form, Ime ime);

}  // namespace luming
