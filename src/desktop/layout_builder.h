#pragma once

#include "screen/layout.h"

namespace luming {

class FormWidget;

/// Fills the form's widget with what the arrangement names. Fields that it hides, or does not name, get no widget.
void BuildLayout(FormWidget& form, const Layout& arrangement);

}  // namespace luming
