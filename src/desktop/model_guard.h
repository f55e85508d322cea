#pragma once

#include <QEventLoop>
#include <QObject>
#include <functional>
#include <vector>

#include "platform/desktop.h"
#include "util/failure.h"

namespace luming {

/// Whether an entry may take its time: a button or a command may, a typed character must not. Only the one that may
/// shows the waiting cursor, which would flicker at every key.
enum class Work { kBrief, kLong };

/// The one door through which events of the window system reach the screens. Nothing that is thrown there passes it:
/// whatever nobody's trap took is shown as a Failure, the end of the process leaves every waiting loop in turn.
class ModelGuard {
 public:
  /// How a failure is shown to the operator. It may wait for an answer.
  void SetFailureHook(std::function<void(const Failure&)> hook) { on_failure_ = std::move(hook); }

  /// Runs `entry`; once the process has ended, nothing.
  void Enter(const std::function<void()>& entry, Work work = Work::kBrief) noexcept;

  /// Handles input until `loop` is left; no waiting cursor meanwhile. Throws ProcessEnded if the process was ended
  /// meanwhile.
  void Wait(QEventLoop& loop);

  /// Handles input until the process ends.
  void Run();
  void EndProcess();
  /// Lets a process start after the last one has ended.
  void StartAnew() { ended_ = false; }
  bool HasEnded() const { return ended_; }

  /// Destroys the window once no handler of a screen is running any more: one of its events may be what runs it.
  void Bury(QObject* window);

 private:
  void RunLoop(QEventLoop& loop);
  void Trap(const std::function<void()>& entry) noexcept;
  void Tell(const Failure& failure) noexcept;
  /// @return whether it was busy before
  bool SetBusy(bool busy);

  std::function<void(const Failure&)> on_failure_;
  std::vector<QEventLoop*> loops_;
  std::vector<QObject*> buried_;
  int depth_ = 0;
  bool ended_ = false;
  bool busy_ = false;
};

}  // namespace luming
