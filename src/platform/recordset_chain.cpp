#include "platform/recordset_chain.h"

#include <memory>

namespace luming {

Recordset Chained(std::vector<Recordset> results) {
  std::unique_ptr<Recordset> next;
  for (auto result = results.rbegin(); result != results.rend(); ++result) {
    auto current = std::make_unique<Recordset>(std::move(*result));
    if (next) current->SetNext(std::move(next));
    next = std::move(current);
  }
  return next ? std::move(*next) : Recordset();
}

}  // namespace luming
