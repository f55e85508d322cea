#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace luming {

/// Lines that read_workbook.py tells of a file; "failed: …" when the reader could not read it.
std::vector<std::string> ReadBack(const std::string& reader, const std::filesystem::path& file);

/// What a command writes; throws when it fails.
std::string CommandOutput(const std::string& command);

/// A directory of its own, gone with the object.
class TestDirectory {
 public:
  TestDirectory();
  ~TestDirectory();
  TestDirectory(const TestDirectory&) = delete;
  TestDirectory& operator=(const TestDirectory&) = delete;
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }
  std::vector<std::string> Names() const;  ///< what lies in it, sorted

 private:
  std::filesystem::path path_;
};

}  // namespace luming
