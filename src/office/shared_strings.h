#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "office/biff_records.h"

namespace luming {

/// The texts of a binary workbook: each stands in the file once and cells refer to it by number.
class SharedStrings {
 public:
  std::uint32_t Add(const std::string& text);  ///< its number
  void Write(BiffStream& stream) const;

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
  std::vector<const std::string*> texts_;  ///< the keys of numbers_, in their order
  std::uint32_t uses_ = 0;
};

}  // namespace luming
