#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/value.h"

namespace luming {

/// What a client looks for among the rows that it has, as an ADO client writes it: a field, "=" or "<>", a quoted text
/// or a number. "SFXM='西药费'", "PH<>'A1'", "id=5"; a quote within the text is doubled.
class RowCriteria {
 public:
  /// Failure kBadArgument for any other text.
  explicit RowCriteria(std::string_view text);

  const std::string& Field() const { return field_; }

  /// Texts compare as in the database, numbers and dates by their value. NULL equals nothing, so it differs from
  /// everything. Failure kBadArgument when the criteria names no number, or no date, for a value that is one.
  bool Holds(const Value& value) const;

 private:
  bool Equals(const Value& value) const;

  std::string field_;
  bool equal_ = true;
  std::string wanted_;
  std::optional<double> number_;  ///< that `wanted_` reads as
};

}  // namespace luming
