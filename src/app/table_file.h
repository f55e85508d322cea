#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "util/date_time.h"

namespace luming {

/// A data file of the store: UTF-8, tabs between fields, the columns in the first line.
struct TableFile {
  std::string table;  ///< the file's name without its extension
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;  ///< each as long as `columns`
};

/// Reads and tests the whole file. Failure, naming file and line, for one that is missing, no UTF-8, without columns,
/// or with a line of another length.
TableFile ReadTableFile(const std::filesystem::path& file);

/// A field as a statement takes it: "\N" is NULL, "@-3" the day three days ago, any other text is quoted.
std::string SqlOfField(const std::string& field, const DateTime& today);

/// A whole text file with its line ends as line feeds. Failure when it is missing or no UTF-8.
std::string ReadTextFile(const std::filesystem::path& file);

}  // namespace luming
