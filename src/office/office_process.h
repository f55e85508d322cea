#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

#include "office/scratch_directory.h"

namespace luming {

/// An office program of its own: hidden, with a profile of its own, ended with this object, with our process, or when
/// its time is over. Constructing only starts it; failure when there is no such program.
class OfficeProcess {
 public:
  explicit OfficeProcess(const std::filesystem::path& office);
  ~OfficeProcess();
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  /// The name of the pipe on which it listens, as soon as it does.
  const std::string& pipe() const { return pipe_; }
  /// A new profile makes the program end once and ask for a second start, which this gives. Failure when it has ended
  /// for any other reason.
  void KeepAlive();
  /// It was asked to end and is given time to do so.
  void AwaitEnd();

  const std::filesystem::path& scratch() const { return scratch_.path(); }

 private:
  void Start();

  std::filesystem::path office_;
  ScratchDirectory scratch_;
  std::string pipe_;
  pid_t process_ = -1;
  bool started_again_ = false;
  bool killed_ = false;
};

}  // namespace luming
