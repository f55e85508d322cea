#include "app/store_place.h"

#include <filesystem>

#include "app/composition.h"
#include "platform/connection_string.h"
#include "util/ansi_text.h"
#include "util/failure.h"

namespace luming {

bool IsConnectionString(const std::string& place) {
  std::error_code out_of_reach;
  return place.find('=') != std::string::npos && !std::filesystem::exists(place, out_of_reach);
}

std::shared_ptr<Connection> OpenStore(const std::string& place, const Clock& clock) {
  if (IsConnectionString(place)) {
    std::shared_ptr<Connection> store = NewConnection(std::filesystem::current_path(), clock);
    store->Open(place);
    return store;
  }
  const std::filesystem::path directory = std::filesystem::absolute(place);
  std::error_code out_of_reach;
  if (!std::filesystem::exists(directory / "DatabaseSet.data", out_of_reach) && !out_of_reach) {
    throw Failure(failure::kFileNotFound, "不是应用程序目录，没有连接文件：" + directory.string());
  }
  std::shared_ptr<Connection> store = NewConnection(directory, clock);
  store->Open(ConnectionFile(directory).Read(1));
  return store;
}

void WriteConnectionFile(const std::filesystem::path& home, const ConnectionFields& fields) {
  const std::string whole = ConnectionStringOf(fields);
  const ConnectionString read(whole);
  const bool same = read.Server() == fields.server && read.Database() == fields.database &&
                    read.User() == fields.user && read.Password() == fields.password;
  if (!same) {
    throw Failure(failure::kInvalidCall,
                  "服务器名、数据库名、用户名和密码中不能有分号，也不能以空格或引号开头或结尾。");
  }
  if (AnsiLength(whole) > ConnectionFile::kLongestText) {
    throw Failure(failure::kBadRecordLength, "服务器名、数据库名、用户名和密码太长，连接文件写不下。");
  }
  ConnectionFile file(home);
  file.Write(ConnectionFile::kConnectionString, whole);
  file.Write(ConnectionFile::kServer, fields.server);
  file.Write(ConnectionFile::kDatabase, fields.database);
  file.Write(ConnectionFile::kUser, fields.user);
  file.Write(ConnectionFile::kPassword, fields.password);
  file.Save();
}

std::string ShownPlace(const std::string& place) {
  if (!IsConnectionString(place)) return place;
  const ConnectionString parts(place);
  return "服务器 " + parts.Server() + " 的数据库 " + parts.Database();
}

}  // namespace luming
