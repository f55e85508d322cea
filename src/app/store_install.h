#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/store_files.h"
#include "platform/database.h"
#include "util/clock.h"

namespace luming {

/// What a database holds of this system's tables and procedures.
struct StoreSurvey {
  std::vector<std::string> tables;
  std::vector<std::string> missing_tables;
  std::vector<std::string> foreign_tables;  ///< of other programs
  std::vector<std::string> missing_procedures;

  bool IsEmpty() const { return tables.empty() && foreign_tables.empty(); }
};

/// Reads only.
StoreSurvey SurveyStore(Connection& store, const StoreFiles& files);

/// Failure for a database that belongs to the server itself or does not keep, compare and measure Chinese text as this
/// system needs it. Reads only.
void DemandChineseDatabase(Connection& store);

/// Failure for a database that is not empty, with what stands there.
void DemandEmptyDatabase(const StoreSurvey& survey);

/// Fills an empty database of a server, whole or not at all.
/// @param password of the operator 管理员; the seed's own when there is none
/// @return what was made, as text for the administrator
std::string InstallStore(const std::shared_ptr<Connection>& store, const StoreFiles& files,
                         const std::optional<std::string>& password, const Clock& clock);

}  // namespace luming
