#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "app/table_file.h"
#include "platform/database.h"
#include "util/date_time.h"

namespace luming {

/// Types the documents of a demonstration into their screens, as an operator would, so that counter, batches and log
/// agree; all of them in the order of their days, each saved on its own. Failure with what a screen said when it
/// refuses one.
///
/// A file bears the name of its screen, a row is a line, and rows of one DH are one document. The columns:
///
/// - DH, KFMC, CZY: which document, in which storehouse, saved by whom
/// - RQ, SJ: when it is saved, the day counted from today and the time
/// - then the fields of the head under their own names, taken from the document's first row
/// - YPBM: the drug
/// - then the fields of the entry dialog under their own names
///
/// A stock take has no entry dialog here: behind the drug stands one column SJ_PC, what its count is off the book. The
/// screen's own list is counted whole, all other drugs as booked.
///
/// Days are counted from today. An empty field is left as the screen shows it; a line whose dialog gets no day has
/// none.
/// @param home of the store, its application directory
void EnterDocuments(const std::filesystem::path& home, std::shared_ptr<Connection> connection,
                    const std::vector<TableFile>& files, const DateTime& today);

}  // namespace luming
