#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "util/clock.h"

namespace luming {

/// A store that an administrator works on, told by its application directory or its connection string. Failure when it
/// cannot be opened.
class OpenedStore {
 public:
  explicit OpenedStore(const std::string& place);

  /// Runs a statement in which each "?" stands for the next of the texts, quoted.
  Recordset Run(std::string_view sql, const std::vector<std::string>& texts = {}) const;
  /// The first field of each row.
  std::vector<std::string> Column(std::string_view sql, const std::vector<std::string>& texts = {}) const;
  /// The first field of the first row as a whole number; 0 without a row.
  int Count(std::string_view sql, const std::vector<std::string>& texts = {}) const;
  /// All or nothing of `change`.
  void Change(const std::function<void()>& change) const;

 private:
  SystemClock clock_;
  std::shared_ptr<Connection> connection_;
};

/// Failure for a name that the store could not keep or the screens could not find again: empty, with a quote or a
/// character of search patterns, outside code page 936, longer than the column's 50 bytes.
/// @param what the kind of name, for the text of the failure
void DemandUsableName(const std::string& what, const std::string& name);

/// The parts of a list that is separated by commas, of either width, or "、"; blanks around them and empty parts go.
std::vector<std::string> ListOf(const std::string& text);

/// "甲、乙、丙", or `none` for an empty list.
std::string Listed(const std::vector<std::string>& names, const char* none = "（无）");

/// Rows of texts with their columns in line, the first row being the head; the last column is not padded.
std::string TableText(const std::vector<std::vector<std::string>>& rows);

}  // namespace luming
