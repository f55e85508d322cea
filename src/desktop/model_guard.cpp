#include "desktop/model_guard.h"

#include <QCursor>
#include <QGuiApplication>
#include <cstdio>
#include <utility>

namespace luming {

void ModelGuard::Tell(const Failure& failure) noexcept {
  try {
    if (on_failure_) return on_failure_(failure);
  } catch (const ProcessEnded&) {
    return EndProcess();
  } catch (...) {
    // Nobody is left to be told but whoever reads the log.
  }
  std::fprintf(stderr, "%ld %s (%s)\n", failure.number(), failure.description().c_str(), failure.source().c_str());
}

void ModelGuard::Trap(const std::function<void()>& entry) noexcept {
  try {
    entry();
  } catch (const ProcessEnded&) {
    EndProcess();
  } catch (const std::exception& fault) {
    Tell(AsFailure(fault));
  } catch (...) {
    Tell(StandardFailure(failure::kInternal));
  }
}

bool ModelGuard::SetBusy(bool busy) {
  const bool before = std::exchange(busy_, busy);
  if (busy && !before) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  if (!busy && before) QGuiApplication::restoreOverrideCursor();
  return before;
}

void ModelGuard::Enter(const std::function<void()>& entry, Work work) noexcept {
  if (ended_) return;
  ++depth_;
  const bool was_busy = SetBusy(busy_ || work == Work::kLong);
  Trap(entry);
  SetBusy(was_busy);
  if (--depth_ > 0) return;
  for (QObject* window : buried_) window->deleteLater();
  buried_.clear();
}

void ModelGuard::RunLoop(QEventLoop& loop) {
  if (ended_) return;
  const bool was_busy = SetBusy(false);
  loops_.push_back(&loop);
  loop.exec();
  loops_.pop_back();
  SetBusy(was_busy);
}

void ModelGuard::Wait(QEventLoop& loop) {
  RunLoop(loop);
  if (ended_) throw ProcessEnded{};
}

void ModelGuard::Run() {
  QEventLoop loop;
  RunLoop(loop);
}

void ModelGuard::EndProcess() {
  ended_ = true;
  for (QEventLoop* loop : loops_) loop->exit();
}

void ModelGuard::Bury(QObject* window) {
  if (depth_ > 0) {
    buried_.push_back(window);
  } else {
    window->deleteLater();
  }
}

}  // namespace luming
