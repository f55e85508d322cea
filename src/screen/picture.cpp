#include "screen/picture.h"

namespace luming {

void Picture::SetFile(std::filesystem::path file) {
  file_ = std::move(file);
  Changed();
}

void Picture::SetBorderStyle(int style) {
  if (border_style_ == style) return;
  border_style_ = style;
  Changed();
}

}  // namespace luming
