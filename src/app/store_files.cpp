#include "app/store_files.h"

#include <algorithm>

#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

namespace fs = std::filesystem;

std::vector<TableFile> ReadTables(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw Failure(failure::kFileNotFound, "缺少数据库文件目录：" + folder.string());
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".tsv") files.push_back(entry.path());
  }
  std::ranges::sort(files);
  std::vector<TableFile> tables;
  for (const fs::path& file : files) tables.push_back(ReadTableFile(file));
  return tables;
}

std::vector<std::string> NamesBehind(const std::string& script, const std::string& words) {
  std::vector<std::string> names;
  for (const std::string& line : Split(script, "\n")) {
    const std::string text = Trim(line);
    if (!UpperAscii(text).starts_with(words)) continue;
    const std::string name = text.substr(words.size(), text.find_first_of(" (", words.size()) - words.size());
    if (!name.starts_with('#')) names.push_back(name);
  }
  return names;
}

}  // namespace

StoreFiles ReadStoreFiles(const fs::path& data, bool demo) {
  StoreFiles files{
      ReadTextFile(data / "schema.sql"), ReadTextFile(data / "procedures.sql"), ReadTables(data / "seed"), {}, {}};
  if (demo) {
    files.demo = ReadTables(data / "demo");
    files.documents = ReadTables(data / "demo" / "documents");
  }
  return files;
}

std::vector<std::string> TablesOf(const StoreFiles& files) {
  return NamesBehind(files.schema, "CREATE TABLE ");
}

std::vector<std::string> ProceduresOf(const StoreFiles& files) {
  return NamesBehind(files.procedures, "CREATE PROCEDURE ");
}

fs::path FindDatabaseFiles(const fs::path& program_directory) {
  for (fs::path place = program_directory; !place.empty(); place = place.parent_path()) {
    for (const fs::path& candidate : {place / "database", place / "share" / "luming" / "database"}) {
      if (fs::exists(candidate / "schema.sql")) return candidate;
    }
    if (place == place.root_path()) break;
  }
  throw Failure(failure::kFileNotFound, "找不到数据库文件目录 database，请用 --data 指定。");
}

}  // namespace luming
