#pragma once

#include "frame/app_context.h"

namespace luming {

Form& TheReceipt(AppContext& app);
Form& TheReturnToSupplier(AppContext& app);

}  // namespace luming
