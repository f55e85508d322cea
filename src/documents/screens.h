#pragma once

#include "frame/screen.h"

namespace luming {

extern const Screen kLoss;
extern const Screen kLossEntry;
extern const Screen kReceipt;
extern const Screen kReceiptEntry;
extern const Screen kRequisition;
extern const Screen kRequisitionEntry;
extern const Screen kReturnToSupplier;
extern const Screen kReturnToSupplierEntry;
extern const Screen kStockTake;
extern const Screen kStockTakeEntry;
extern const Screen kUncountedDrugs;

}  // namespace luming
