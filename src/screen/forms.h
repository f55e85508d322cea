#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"
#include "screen/form.h"
#include "util/clock.h"

namespace luming {

class Grid;
enum class GridCommand;

/// All forms that exist, in order of creation: one instance for each class. Owns them.
class Forms {
 public:
  /// Both outlive it.
  Forms(Desktop& desktop, const Clock& clock) : desktop_(desktop), clock_(clock) {}
  ~Forms();

  Desktop& desktop() const { return desktop_; }
  const Clock& clock() const { return clock_; }  ///< date boxes start at its today

  /// Switches to the keyboard layout that the operator chose; called when a field that asks for it gets the focus. May
  /// stay empty.
  std::function<void()> operator_ime;
  /// Prints or exports a grid at the operator's wish. May stay empty.
  std::function<void(Grid&, GridCommand)> grid_command;

  /// The form of that class, created on first use. A class names itself in `kName`.
  template <class T, class... Args>
  T& Get(Args&&... args) {
    if (T* found = FindAs<T>()) return *found;
    auto made = std::make_unique<T>(std::forward<Args>(args)...);
    T& form = *made;
    Own(std::move(made));
    return form;
  }
  /// The form if it exists, else null.
  template <class T>
  T* FindAs() const {
    return static_cast<T*>(Find(T::kName));
  }
  Form* Find(std::string_view name) const;
  std::vector<Form*> All() const;  ///< in order of creation

  /// The child form in front, and the form of any kind in front; null when there is none.
  Form* ActiveChild() const;
  Form* Top() const;
  /// Order of showing, the one in front last; the desktop keeps it right when the operator switches windows.
  const std::vector<Form*>& Shown() const { return shown_; }
  void BroughtToFront(Form& form);

  /// Unloads every form without asking, in order of creation reversed. The first failure of an Unloading comes out when
  /// all are gone.
  void UnloadAll();

  /// While one is alive, closed forms are kept; the outermost one's end destroys them.
  class HandlerScope {
   public:
    explicit HandlerScope(Forms& forms) : forms_(forms) { ++forms_.depth_; }
    ~HandlerScope();
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

   private:
    Forms& forms_;
  };

 private:
  friend class Form;
  void AppearedBeside(Form& form);  ///< shown, the one in front stays in front
  template <class Matches>
  Form* LastShown(Matches matches) const;
  void Own(std::unique_ptr<Form> form);
  void Release(Form& form);
  void WasHidden(Form& form);

  Desktop& desktop_;
  const Clock& clock_;
  std::vector<std::unique_ptr<Form>> forms_;
  std::vector<std::unique_ptr<Form>> closed_;
  std::vector<Form*> shown_;
  int depth_ = 0;
};

}  // namespace luming
