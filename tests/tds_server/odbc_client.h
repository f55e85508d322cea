#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

namespace luming::test {

/// What a statement gave through the real driver, read plainly: no adapter of the program's stands between.
struct OdbcOutcome {
  std::vector<std::vector<std::string>> rows;  ///< of all results, NULL as "NULL"
  std::vector<std::string> columns;            ///< "name:SQL type" of the last result with columns
  std::vector<long> counts;                    ///< of the results without columns
  int error = 0;                               ///< the server's number of the first error; 0: none
  std::string state;                           ///< its SQLSTATE
  std::string message;
};

/// A connection through unixODBC and FreeTDS.
class OdbcClient {
 public:
  /// Logs in as sa.
  explicit OdbcClient(std::string password = "");
  ~OdbcClient();
  OdbcClient(const OdbcClient&) = delete;
  OdbcClient& operator=(const OdbcClient&) = delete;

  /// Empty when it is open, else "not open" and the numbers of all errors.
  std::string Open(int port, const std::string& database, const std::string& version = "7.4");
  void Close();
  OdbcOutcome Run(const std::string& sql, int timeout_seconds = 0);
  /// What the driver knows of the connection.
  bool IsDead() const;
  void SetAutoCommit(bool on);
  void EndTransaction(bool commit);

 private:
  void ReadRows(SQLHSTMT statement, OdbcOutcome& outcome);

  std::string password_;
  SQLHENV environment_ = nullptr;
  SQLHDBC connection_ = nullptr;
  bool open_ = false;
};

}  // namespace luming::test
