#pragma once

#include <filesystem>

namespace luming {

/// A directory of its own below the system's temporary one, for its owner's eyes alone; gone with the object. Failure
/// when it cannot be made.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace luming
