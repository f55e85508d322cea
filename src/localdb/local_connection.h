#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "util/clock.h"

namespace luming {

namespace localdb {
struct Session;
class LexedText;
}  // namespace localdb

/// The embedded database: T-SQL text on a file of SQLite.
class LocalConnection : public Connection {
 public:
  static constexpr std::chrono::milliseconds kBusyTimeout{5000};

  /// @param directory    where the stores lie, one file NAME.db for each catalogue
  /// @param clock        what GETDATE() tells; must outlive the connection
  /// @param busy_timeout how long a statement waits for another program's transaction before it fails
  LocalConnection(std::filesystem::path directory, const Clock& clock,
                  std::chrono::milliseconds busy_timeout = kBusyTimeout);
  ~LocalConnection() override;

  /// Opens the store that "Initial Catalog" names. Fails with number -2147467259 when there is none, when the file is
  /// damaged or foreign, or when another program holds it.
  void Open(std::string_view connection_string) override;
  void Close() override;
  bool IsOpen() const override { return session_ != nullptr; }

  Recordset Execute(std::string_view sql) override;
  /// Runs a file of batches separated by lines with the word GO, whole or not at all. A failure tells the line at which
  /// its batch begins.
  void RunScript(std::string_view text);

  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  localdb::Session& RequireOpen() const;
  Recordset Run(std::string_view sql);

  std::filesystem::path directory_;
  const Clock& clock_;
  std::chrono::milliseconds busy_timeout_;
  std::unique_ptr<localdb::Session> session_;
  std::unique_ptr<localdb::LexedText> lexed_;
};

/// Makes a new, empty store NAME.db in the directory. Fails when there is one already or the name cannot be a file's.
void CreateStore(const std::filesystem::path& directory, const std::string& name);
/// The file of a store.
std::filesystem::path StorePath(const std::filesystem::path& directory, const std::string& name);

}  // namespace luming
