#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace luming {

/// Lines that read_workbook.py tells of a file; "failed: …" when the reader could not read it.
std::vector<std::string> ReadBack(const std::string& reader, const std::filesystem::path& file);

/// What a command writes; throws when it fails.
std::string CommandOutput(const std::string& command);

/// What lies in a directory, sorted.
std::vector<std::string> NamesIn(const std::filesystem::path& directory);

}  // namespace luming
