#include "screen/ime.h"

#include "screen/forms.h"

namespace luming {

void TakeIme(Form& form, Ime ime) {
  const auto& operator_ime = form.Registry().operator_ime;
  if (ime == Ime::kOperator && operator_ime) operator_ime();
}

}  // namespace luming
