#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace luming {

/// The parts "key=value" of a connection string, as an ADO client reads them: separated by semicolons, blanks around
/// keys and values without meaning, a value with semicolons of its own within single or double quotes, which stand
/// twice where they belong to it. Nothing is refused: what is no such part is passed over, and a quote that is not
/// closed belongs to the value.
class ConnectionString {
 public:
  explicit ConnectionString(std::string_view text);

  /// The value of the key that is there, of the keys in their order; empty when none is. Letter case of keys does not
  /// matter, and of a key that stands twice the last value counts.
  std::string Value(std::initializer_list<std::string_view> keys) const;
  std::string Value(std::string_view key) const { return Value({key}); }

  // The parts that every client knows, under each of their names.
  std::string Server() const { return Value({"Data Source", "Server", "Address", "Addr", "Network Address"}); }
  std::string Database() const { return Value({"Initial Catalog", "Database"}); }
  std::string User() const { return Value({"User ID", "UID", "User"}); }
  std::string Password() const { return Value({"Password", "PWD"}); }
  bool HasPassword() const { return Find({"Password", "PWD"}) != nullptr; }

 private:
  const std::string* Find(std::initializer_list<std::string_view> keys) const;

  std::vector<std::pair<std::string, std::string>> parts_;
};

}  // namespace luming
