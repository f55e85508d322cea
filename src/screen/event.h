#pragma once

#include <functional>
#include <stdexcept>
#include <utility>

namespace luming {

/// A handler slot of a control: at most one handler, a member function of the screen.
template <class... Args>
class Event {
 public:
  template <class T>
  void Connect(T* owner, void (T::*handler)(Args...)) {
    Connect([owner, handler](Args... args) { (owner->*handler)(args...); });
  }
  /// A second handler would silence the first one, so it is refused: std::logic_error.
  void Connect(std::function<void(Args...)> handler) {
    if (handler_) throw std::logic_error("an event has a handler already");
    handler_ = std::move(handler);
  }
  bool IsConnected() const { return static_cast<bool>(handler_); }
  void Fire(Args... args) const {
    if (handler_) handler_(args...);
  }

 private:
  std::function<void(Args...)> handler_;
};

/// Codes of the keys that the screens speak of.
namespace key {
inline constexpr int kBackspace = 8, kTab = 9, kEnter = 13, kEsc = 27, kSpace = 32;
inline constexpr int kPageUp = 33, kPageDown = 34, kEnd = 35, kHome = 36;
inline constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kInsert = 45, kDelete = 46;
inline constexpr int kF1 = 112, kF2 = 113, kF3 = 114, kF4 = 115, kF5 = 116, kF6 = 117, kF8 = 119, kF12 = 123;
}  // namespace key

struct KeyEvent {
  int code = 0;  ///< see namespace key; letters and digits by their upper-case ASCII code
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
  bool widget_edits = false;  ///< a drawn editor edits its text with this key: the control's own editing must not
  bool handled = false;       ///< set by a handler to stop what would follow
};

}  // namespace luming
