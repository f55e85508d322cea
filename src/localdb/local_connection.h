#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "util/clock.h"

namespace luming {

namespace localdb {
struct LockWait;
struct Session;
class LexedText;
class ResultListener;
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
  /// Asks all the time while a statement waits for another program's transaction; the wait ends when it says false.
  void WaitWhile(std::function<bool()> goes_on);
  void Close() override;
  bool IsOpen() const override { return session_ != nullptr; }

  Recordset Execute(std::string_view sql) override;
  /// The same for a program that hands the store on to others: the listener is told of all results, in order, and of
  /// errors that end their statement only; an error that ends the text is thrown.
  void Execute(std::string_view sql, localdb::ResultListener& listener);
  /// True inside a transaction, whether it was begun by the client or by a statement.
  bool InTransaction() const;

  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  void SetHurry(bool hurry) override;

 private:
  localdb::Session& RequireOpen() const;
  Recordset Run(std::string_view sql, localdb::ResultListener* listener);

  std::filesystem::path directory_;
  const Clock& clock_;
  std::unique_ptr<localdb::LockWait> wait_;
  std::unique_ptr<localdb::Session> session_;
  std::unique_ptr<localdb::LexedText> lexed_;
};

/// Makes a new, empty store NAME.db in the directory. Fails when there is one already or the name cannot be a file's.
void CreateStore(const std::filesystem::path& directory, const std::string& name);
/// The file of a store.
std::filesystem::path StorePath(const std::filesystem::path& directory, const std::string& name);

}  // namespace luming
