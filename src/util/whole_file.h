#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "util/failure.h"

namespace luming {

/// Failure kFileAccess that names the file and says why. @param error of the system, as errno tells it
Failure NoFileAccess(const std::filesystem::path& file, int error);

/// Whether there is such a file. Failure kFileAccess when that cannot be told.
bool FileExists(const std::filesystem::path& file);

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
