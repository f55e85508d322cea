#include "screen/progress_bar.h"

#include <algorithm>

namespace luming {

void ProgressBar::SetShare(double share) {
  share = std::clamp(share, 0.0, 1.0);
  if (share == share_) return;
  share_ = share;
  Changed();
}

}  // namespace luming
