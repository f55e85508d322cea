#include "localdb/frame.h"

#include <algorithm>

#include "util/text.h"

namespace luming::localdb {

const Variable* Frame::Find(std::string_view name) const {
  bool of_session = name.starts_with("@@");
  if (of_session && caller_) return caller_->Find(name);
  auto found = std::find_if(variables_.begin(), variables_.end(),
                            [&](const Variable& v) { return EqualsIgnoreCase(v.name, name); });
  return found == variables_.end() ? nullptr : &*found;
}

Variable* Frame::Find(std::string_view name) {
  return const_cast<Variable*>(std::as_const(*this).Find(name));
}

Variable& Frame::Declare(std::string_view name, const SqlType& type) {
  Variable* variable = Find(name);
  if (!variable) variable = &variables_.emplace_back();
  *variable = {std::string(name), type, {}};
  return *variable;
}

const Table* Frame::FindTemporary(std::string_view name) const {
  for (const auto& table : temporaries_) {
    if (EqualsIgnoreCase(table->name, name)) return table.get();
  }
  bool shared = !name.starts_with('@');
  return caller_ && shared ? caller_->FindTemporary(name) : nullptr;
}

bool Frame::OwnsTemporary(std::string_view name) const {
  return std::any_of(temporaries_.begin(), temporaries_.end(),
                     [&](const auto& table) { return EqualsIgnoreCase(table->name, name); });
}

bool Frame::HasPhysical(std::string_view physical) const {
  bool here = std::any_of(temporaries_.begin(), temporaries_.end(),
                          [&](const auto& table) { return table->physical == physical; });
  return here || (caller_ && caller_->HasPhysical(physical));
}

void Frame::AddTemporary(std::unique_ptr<Table> table) {
  temporaries_.push_back(std::move(table));
}

void Frame::DropTemporary(std::string_view name) {
  std::erase_if(temporaries_, [&](const auto& table) { return EqualsIgnoreCase(table->name, name); });
}

}  // namespace luming::localdb
