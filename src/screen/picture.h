#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "screen/control.h"

namespace luming {

/// What a picture shows while it has no file.
enum class Emblem { kNone, kProgram, kLock };

class Picture : public Control {
 public:
  Picture(Form* form, std::string name, Emblem emblem = Emblem::kNone)
      : Control(form, ControlKind::kPicture, std::move(name), {}), emblem_(emblem) {}
  const std::filesystem::path& File() const { return file_; }
  void SetFile(std::filesystem::path file);  ///< a missing or unreadable file draws the emblem
  Emblem Shown() const { return emblem_; }
  int BorderStyle() const { return border_style_; }  ///< 1: a line stands around it
  void SetBorderStyle(int style);
  bool CanFocus() const override { return false; }
  Event<> click;
  Event<> mouse_move;
  void UserClick() override { click.Fire(); }
  void UserMouseMove() { mouse_move.Fire(); }  ///< the mouse came over it

 private:
  std::filesystem::path file_;
  Emblem emblem_;
  int border_style_ = 0;
};

}  // namespace luming
