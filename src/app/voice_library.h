#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace luming {

/// The library `cky95h` that comes with a voice device, bound at the first call.
class VoiceLibrary {
 public:
  /// @param directories searched ahead of those of the system
  explicit VoiceLibrary(std::vector<std::filesystem::path> directories) : directories_(std::move(directories)) {}

  /// Passes the text in code page 936. Nothing happens where there is no such library.
  void dsbdll(int number, const std::string& text);

 private:
  using Routine = int (*)(int number, const char* text);

  Routine Bind() const;

  std::vector<std::filesystem::path> directories_;
  Routine routine_ = nullptr;
};

}  // namespace luming
