#include "app/admin/admin_verb.h"

#include <algorithm>

#include "app/admin/admin_store.h"

namespace luming {

int RunVerb(const std::vector<AdminVerb>& verbs, const std::vector<std::string>& arguments, AdminConsole& console) {
  std::vector<std::string> names;
  for (const AdminVerb& verb : verbs) names.emplace_back(verb.name);
  if (arguments.empty()) throw BadUsage{"没有指定操作：" + Listed(names)};
  const auto found = std::ranges::find_if(verbs, [&](const AdminVerb& verb) { return arguments[0] == verb.name; });
  if (found == verbs.end()) throw BadUsage{"不认识的操作：" + arguments[0]};
  const AdminArguments rest({arguments.begin() + 1, arguments.end()}, found->with_value, found->flags);
  rest.DemandAtMost(found->most_words);
  const OpenedStore store(WithPassword(rest.Word(0, "没有指定目录或连接字符串。"), console));
  return found->run(rest, store, console);
}

}  // namespace luming
