#pragma once

#include "frame/screen.h"

namespace luming {

extern const Screen kStockTakeQuery;

}  // namespace luming
