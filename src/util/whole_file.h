#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// All bytes of a file; nothing when there is no such file. Failure kFileAccess when it cannot be read, is a directory,
/// or is larger than `limit` bytes.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& file, std::size_t limit = 1U << 30);

enum class FileAccess { kAsDirectorySays, kOwnerOnly };

/// Puts the bytes in place of the file: a crash leaves either the old or the new one, never a part. An existing file
/// keeps its access rights unless `access` narrows them. Failure kFileAccess when it cannot be written; the old file is
/// whole then.
void ReplaceFile(const std::filesystem::path& file, std::string_view bytes,
                 FileAccess access = FileAccess::kAsDirectorySays);

}  // namespace luming
