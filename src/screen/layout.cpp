#include "screen/layout.h"

#include <algorithm>
#include <map>

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

std::vector<Control*> TabOrder(const Layout& layout, const std::vector<Control*>& fields) {
  constexpr std::size_t kNever = std::string::npos;
  std::map<const Control*, std::size_t> places;
  Walk(layout, [&](const Control& field, bool hidden) { places.emplace(&field, hidden ? kNever : places.size()); });
  const auto place_of = [&](const Control* field) {
    const auto found = places.find(field);
    return found == places.end() ? places.size() : found->second;
  };
  std::vector<Control*> order = fields;
  std::erase_if(order, [&](const Control* field) { return place_of(field) == kNever; });
  std::ranges::stable_sort(order, {}, place_of);
  return order;
}

bool IsDrawn(const Layout& layout, const Control& field) {
  bool drawn = true;
  Walk(layout, [&](const Control& each, bool hidden) {
    if (&each == &field && hidden) drawn = false;
  });
  return drawn;
}

}  // namespace luming
