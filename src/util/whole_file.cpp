#include "util/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>

#include "util/system_reason.h"

namespace luming {

namespace {

/// Facts of the file; nothing when there is none.
std::optional<struct stat> FactsOf(const std::filesystem::path& file) {
  struct stat facts {};
  if (stat(file.c_str(), &facts) == 0) return facts;
  if (errno == ENOENT) return std::nullopt;
  throw NoFileAccess(file, errno);
}

/// What will take the place of a file, as it is written beside it: closed, and removed unless it was kept.
class DraftFile {
 public:
  DraftFile(std::filesystem::path target, mode_t mode) : target_(std::move(target)), file_(target_) {
    file_ += ".new" + std::to_string(getpid());
    unlink(file_.c_str());
    descriptor_ = open(file_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor_ < 0) throw NoFileAccess(target_, errno);
  }
  ~DraftFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!kept_) unlink(file_.c_str());
  }
  DraftFile(const DraftFile&) = delete;
  DraftFile& operator=(const DraftFile&) = delete;

  void SetMode(mode_t mode) {
    if (fchmod(descriptor_, mode) != 0) throw NoFileAccess(target_, errno);
  }

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) throw NoFileAccess(target_, errno);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  void Keep() {
    if (fsync(descriptor_) != 0) throw NoFileAccess(target_, errno);
    if (rename(file_.c_str(), target_.c_str()) != 0) throw NoFileAccess(target_, errno);
    kept_ = true;
  }

 private:
  std::filesystem::path target_;  ///< named in failures: the operator knows that one
  std::filesystem::path file_;
  int descriptor_ = -1;
  bool kept_ = false;
};

/// Makes the new name itself survive a power cut. Some file systems refuse this; the bytes are safe by then.
void SyncDirectory(const std::filesystem::path& directory) {
  const int descriptor = open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace

Failure NoFileAccess(const std::filesystem::path& file, int error) {
  return {failure::kFileAccess,
          StandardFailure(failure::kFileAccess).description() + "：" + file.string() + "（" + SystemReason(error) + "）"};
}

bool FileExists(const std::filesystem::path& file) {
  return FactsOf(file).has_value();
}

std::optional<std::string> ReadWholeFile(const std::filesystem::path& file, std::size_t limit) {
  const auto facts = FactsOf(file);
  if (!facts) return std::nullopt;
  if (!S_ISREG(facts->st_mode)) throw NoFileAccess(file, EISDIR);
  if (static_cast<std::uintmax_t>(facts->st_size) > limit) throw NoFileAccess(file, EFBIG);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw NoFileAccess(file, errno);
  std::string bytes(static_cast<std::size_t>(facts->st_size), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  if (stream.bad()) throw NoFileAccess(file, EIO);
  return bytes;
}

void ReplaceFile(const std::filesystem::path& file, std::string_view bytes, FileAccess access) {
  std::error_code no_link;
  const std::filesystem::path resolved = std::filesystem::canonical(file, no_link);
  const std::filesystem::path& target = no_link ? file : resolved;

  const auto facts = FactsOf(target);
  DraftFile draft(target, access == FileAccess::kOwnerOnly ? 0600 : 0666);
  if (access == FileAccess::kOwnerOnly) {
    draft.SetMode(0600);
  } else if (facts) {
    draft.SetMode(facts->st_mode & 07777);
  }
  draft.Write(bytes);
  draft.Keep();
  SyncDirectory(target.parent_path());
}

}  // namespace luming
