#include "app/table_file.h"

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "demand.h"
#include "util/date_time.h"
#include "util/failure.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("luming-fuzz-table-" + std::to_string(getpid()) + ".tsv");
  std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  try {
    const TableFile table = ReadTableFile(file);
    Demand(!table.columns.empty());
    for (const auto& row : table.rows) {
      Demand(row.size() == table.columns.size());
      for (const std::string& field : row) {
        const std::string sql = SqlOfField(field, DateTime(2026, 3, 1));
        Demand(sql == "NULL" || (sql.size() >= 2 && sql.front() == '\'' && sql.back() == '\''));
      }
    }
  } catch (const Failure& failure) {
    Demand(!failure.description().empty());
  }
  std::filesystem::remove(file);
  return 0;
}
