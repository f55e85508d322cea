#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "app/table_file.h"

namespace luming {

/// What a store is made from, read whole ahead of the first change.
struct StoreFiles {
  std::string schema;      ///< script that makes the tables
  std::string procedures;  ///< script that makes the procedures
  std::vector<TableFile> seed;
  std::vector<TableFile> demo;       ///< empty unless the demonstration is wanted
  std::vector<TableFile> documents;  ///< of the demonstration, to be typed into the screens that they are named after
};

/// @param data with schema.sql, procedures.sql, seed/ and demo/ with demo/documents/. Failure tells what is missing or
/// damaged.
StoreFiles ReadStoreFiles(const std::filesystem::path& data, bool demo);

/// The names that the script's lines "CREATE TABLE" and "CREATE PROCEDURE" give, temporary tables left out.
std::vector<std::string> TablesOf(const StoreFiles& files);
std::vector<std::string> ProceduresOf(const StoreFiles& files);

/// The directory of the database files: beside the program, or in the source tree that it was built in. Failure when
/// there is none.
std::filesystem::path FindDatabaseFiles(const std::filesystem::path& program_directory);

}  // namespace luming
