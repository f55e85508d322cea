#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// A program of that name in the directories of PATH.
std::optional<std::string> FindProgram(std::string_view name);

/// How running a command came out.
struct CommandResult {
  enum class Kind { kDone, kMissing, kFailed, kTooLate } kind = Kind::kMissing;
  std::string output;  ///< its standard output; only of a command that is done
};

/// Runs a program, found by PATH, and waits for it, but no longer than `patience`: then it is ended.
/// @param command the program's name and its arguments
CommandResult RunCommand(const std::vector<std::string>& command, std::chrono::milliseconds patience);

}  // namespace luming
