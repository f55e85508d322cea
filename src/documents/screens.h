#pragma once

#include "frame/screen.h"

namespace luming {

extern const Screen kLoss;
extern const Screen kLossEntry;
extern const Screen kIssueDesk;
extern const Screen kIssueNote;
extern const Screen kIssueNoteEntry;
extern const Screen kIssueQuery;
extern const Screen kPharmacyReturn;
extern const Screen kPharmacyReturnDesk;
extern const Screen kReceipt;
extern const Screen kReceiptChoice;
extern const Screen kReceiptEntry;
extern const Screen kRequisition;
extern const Screen kRequisitionEntry;
extern const Screen kReturnToSupplier;
extern const Screen kReturnToSupplierEntry;
extern const Screen kStockTake;
extern const Screen kStockTakeEntry;
extern const Screen kUncountedDrugs;

}  // namespace luming
