#pragma once

#include <filesystem>
#include <memory>

#include "app/table_file.h"
#include "platform/database.h"
#include "util/date_time.h"

namespace luming {

/// Enters the opening receipts of a new store through the receipt screen, as an operator would, so that counter,
/// batches and log agree. Each receipt is saved on its own day. Failure with what the screen said when it refuses one.
/// @param home     application directory of the store
/// @param receipts one line a row; lines of one number are one receipt
void EnterOpeningReceipts(const std::filesystem::path& home, std::shared_ptr<Connection> connection,
                          const TableFile& receipts, const DateTime& today);

}  // namespace luming
