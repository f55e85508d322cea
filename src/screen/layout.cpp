#include "screen/layout.h"

namespace luming {
namespace {

void WalkPart(const Layout& part, bool hidden, const std::function<void(const Control&, bool)>& visit) {
  if (part.control) visit(*part.control, hidden);
  const bool hides = hidden || part.kind == Layout::Kind::kHidden;
  for (const Layout& inner : part.parts) WalkPart(inner, hides, visit);
}

}  // namespace

void Walk(const Layout& layout, const std::function<void(const Control& field, bool hidden)>& visit) {
  WalkPart(layout, false, visit);
}

bool IsDrawn(const Layout& layout, const Control& field) {
  bool drawn = true;
  Walk(layout, [&](const Control& each, bool hidden) {
    if (&each == &field && hidden) drawn = false;
  });
  return drawn;
}

}  // namespace luming
