#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/admin/admin_command.h"
#include "app/admin/opened_store.h"

namespace luming {

/// What a subcommand can do to a store, by its first word: "operator add".
struct AdminVerb {
  const char* name;
  int (*run)(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console);
  std::size_t most_words;  ///< the directory, which is word 0, among them
  std::vector<std::string_view> with_value = {};
  std::vector<std::string_view> flags = {};
};

/// Runs the verb that the first argument names, on the store of the directory that stands behind it.
int RunVerb(const std::vector<AdminVerb>& verbs, const std::vector<std::string>& arguments, AdminConsole& console);

}  // namespace luming
