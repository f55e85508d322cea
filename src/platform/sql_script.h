#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace luming {

/// One text to send, of a script that holds several.
struct SqlBatch {
  std::string text;
  std::size_t first_line;  ///< where it begins in the script, from 1
};

/// The batches of a script, which lines with nothing but the word GO set apart; empty ones are left out.
std::vector<SqlBatch> SplitScript(std::string_view script);

/// Runs the batches in one transaction, whole or not at all; a failure rolls back whatever the client has begun and
/// tells the line at which its batch begins.
void RunScript(Connection& connection, std::string_view script);

}  // namespace luming
