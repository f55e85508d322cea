#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/catalogue.h"
#include "localdb/conversion.h"

namespace luming::localdb {

struct Variable {
  std::string name;
  SqlType type;
  Datum value;
};

/// What a running batch or procedure has of its own: variables, and the temporary tables it made. A procedure sees the
/// temporary tables of its callers, but not their variables.
class Frame {
 public:
  explicit Frame(const Frame* caller = nullptr) : caller_(caller) {}

  Variable* Find(std::string_view name);
  const Variable* Find(std::string_view name) const;
  /// Declares the variable anew or again.
  Variable& Declare(std::string_view name, const SqlType& type);

  const Table* FindTemporary(std::string_view name) const;
  void AddTemporary(std::unique_ptr<Table> table);
  void DropTemporary(std::string_view name);
  const std::vector<std::unique_ptr<Table>>& temporaries() const { return temporaries_; }
  bool OwnsTemporary(std::string_view name) const;
  /// True if a temporary table in reach has this name in the engine.
  bool HasPhysical(std::string_view physical) const;

 private:
  const Frame* caller_;
  std::deque<Variable> variables_;
  std::vector<std::unique_ptr<Table>> temporaries_;
};

}  // namespace luming::localdb
