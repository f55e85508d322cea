#pragma once

#include "frame/app_context.h"
#include "screen/grid.h"

namespace luming {

/// Previews or exports any grid under its form's caption. Failures are shown in the common box.
void RunGridCommand(AppContext& app, Grid& grid, GridCommand command);

}  // namespace luming
