#include "app/admin/admin_store.h"

#include "app/composition.h"
#include "app/store_files.h"
#include "app/store_place.h"
#include "platform/connection_string.h"
#include "util/text.h"

namespace luming {

std::string WithPassword(const std::string& place, AdminConsole& console) {
  if (!IsConnectionString(place)) return place;
  const ConnectionString parts(place);
  if (parts.User().empty() || parts.HasPassword()) return place;
  const std::string password = console.ask_secret("数据库用户“" + parts.User() + "”的密码：");
  return place + ";Password=\"" + Replace(password, "\"", "\"\"") + "\";";
}

std::filesystem::path DatabaseFiles(const AdminArguments& arguments) {
  const auto named = arguments.Value("--data");
  return named ? std::filesystem::path(*named) : FindDatabaseFiles(ProgramDirectory());
}

}  // namespace luming
