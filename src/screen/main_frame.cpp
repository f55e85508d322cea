#include "screen/main_frame.h"

namespace luming {

void MainFrame::SetStatusPanel(int number, std::string text) {
  panels_.at(static_cast<std::size_t>(number - 1)) = std::move(text);
  FrameChanged();
}

void MainFrame::SetToolBarVisible(bool visible) {
  tool_bar_visible_ = visible;
  FrameChanged();
}

void MainFrame::SetStatusBarVisible(bool visible) {
  status_bar_visible_ = visible;
  FrameChanged();
}

void MainFrame::SetThemeNumber(int theme) {
  theme_ = theme;
  FrameChanged();
}

void MainFrame::SetBackPicture(std::filesystem::path file) {
  back_picture_ = std::move(file);
  FrameChanged();
}

void MainFrame::FrameChanged() {
  if (View()) View()->LookChanged();
}

}  // namespace luming
