#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "util/clock.h"

namespace luming {

/// What a new application directory is made from.
struct StoreRequest {
  std::filesystem::path directory;           ///< missing or empty; comes into being whole or not at all
  std::filesystem::path data;                ///< with schema.sql, procedures.sql, seed/ and demo/
  bool demo = false;                         ///< with the demonstration drugs, operators and documents
  std::optional<std::string> password = {};  ///< of the operator 管理员; the seed's own when there is none
};

/// Makes an application directory ready to start: the embedded store with its seed, the connection file and the
/// settings file. Failure tells what is missing or damaged; nothing half-made stays behind.
void MakeApplicationDirectory(const StoreRequest& request, const Clock& clock);

/// Failure when a store cannot be made there because something is there already.
void DemandFreePlace(const std::filesystem::path& directory);

/// Makes an application directory whose embedded store is still empty and lets `fill` do the rest; nothing stays behind
/// when that fails.
/// @param fill gets the directory, which is not yet where it will be
void StageApplicationDirectory(const std::filesystem::path& directory,
                               const std::function<void(const std::filesystem::path&)>& fill);

}  // namespace luming
