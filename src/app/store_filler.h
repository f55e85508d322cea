#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "app/store_files.h"
#include "platform/database.h"
#include "util/clock.h"

namespace luming {

/// Makes tables and procedures.
void MakeTables(Connection& store, const StoreFiles& files);

/// Fills an empty store: tables, procedures, seed, demonstration, the password of the operator 管理员 when there is
/// one. Failure tells what could not be done; a store in whose transaction that happened is rolled back.
/// @param home application directory, for the screens through which the documents of the demonstration are entered
void FillStore(const std::shared_ptr<Connection>& store, const StoreFiles& files,
               const std::optional<std::string>& password, const std::filesystem::path& home, const Clock& clock);

/// Failure for a password that could never be typed at the login, is empty, or is too long.
void DemandUsablePassword(const std::string& password);

}  // namespace luming
