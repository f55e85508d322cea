#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "localdb/result_listener.h"
#include "tds_server/faults.h"
#include "tds_server/wire.h"

namespace luming::tds {

/// What the server tells a client of the state of its connection.
enum class Environment : std::uint8_t {
  kDatabase = 1,
  kLanguage = 2,
  kPacketSize = 4,
  kCollation = 7,
  kBegin = 8,
  kCommit = 9,
  kRollback = 10,
};

/// An answer to one message, made token by token: what the engine tells of its results goes in as it comes.
class Reply : public localdb::ResultListener {
 public:
  /// @param fault one that cuts the reply short inside its rows, or nothing
  explicit Reply(const std::optional<Fault>& fault) : fault_(fault) {}

  void Rows(const std::vector<localdb::Column>& columns, Recordset& rows) override;
  void Changed(std::int64_t count) override;
  void Failed(const localdb::SqlError& error) override;
  void ProcedureBegan() override { in_procedure_ = true; }
  void ProcedureEnded(std::int64_t return_value) override;

  void Error(int number, const std::string& text) { Tell(kErrorToken, number, text); }
  void Info(int number, const std::string& text) { Tell(kInfoToken, number, text); }
  void ChangeText(Environment what, const std::string& value, const std::string& old);
  /// A transaction has begun or ended; its descriptor goes as the new value or as the old one.
  void ChangeTransaction(Environment what);
  void ChangeCollation();
  void AcceptLogin();
  /// The last token.
  void Finish(bool failed, bool in_transaction);
  /// The last token of an answer to an attention.
  void FinishAttention();

  /// What is to be sent; the part before the cut when a fault has cut it.
  std::string_view bytes() const { return std::string_view(out_.bytes()).substr(0, cut_.value_or(std::string::npos)); }
  bool IsCut() const { return cut_.has_value(); }

 private:
  static constexpr unsigned kErrorToken = 0xaa;
  static constexpr unsigned kInfoToken = 0xab;

  void Tell(unsigned token, int number, const std::string& text);
  void Done(unsigned token, unsigned status, std::int64_t count);
  void StatementDone(unsigned status, std::int64_t count);
  void CutAt(int row, std::size_t row_begin);

  std::optional<Fault> fault_;
  Writer out_;
  bool in_procedure_ = false;
  std::optional<std::size_t> cut_;
  std::optional<std::size_t> last_done_;  ///< where the last token DONE begins
};

}  // namespace luming::tds
