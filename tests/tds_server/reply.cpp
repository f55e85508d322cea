#include "tds_server/reply.h"

#include "tds_server/columns.h"

namespace luming::tds {
namespace {

constexpr unsigned kEnvironmentToken = 0xe3;
constexpr unsigned kLoginToken = 0xad;
constexpr unsigned kReturnStatusToken = 0x79;
constexpr unsigned kDoneToken = 0xfd;
constexpr unsigned kProcedureDoneToken = 0xfe;
constexpr unsigned kInProcedureDoneToken = 0xff;

constexpr unsigned kMore = 0x01;
constexpr unsigned kFailed = 0x02;
constexpr unsigned kInTransaction = 0x04;
constexpr unsigned kCounted = 0x10;
constexpr unsigned kAttention = 0x20;

constexpr std::string_view kServerName = "luming-test";
constexpr std::uint64_t kTransactionDescriptor = 0x11;

// The class, or severity, that the server gives an error of the number.
unsigned ClassOf(int number) {
  switch (number) {
    case 102:
    case 105:
    case 137:
    case 156:
      return 15;
    case 1205:
      return 13;
    case 2601:
    case 2627:
    case 18456:
      return 14;
    case 4060:
      return 11;
    default:
      return 16;
  }
}

/// The length of a token, known when its content is made, goes before the content.
void WriteCounted(Writer& out, unsigned token, const Writer& content) {
  out.U8(token);
  out.U16(static_cast<unsigned>(content.bytes().size()));
  out.Raw(content.bytes());
}

}  // namespace

void Reply::Tell(unsigned token, int number, const std::string& text) {
  Writer content;
  content.U32(static_cast<std::uint32_t>(number));
  content.U8(1);
  content.U8(token == kErrorToken ? ClassOf(number) : 0);
  content.LongText(text);
  content.ShortText(kServerName);
  content.ShortText("");
  content.U32(1);
  WriteCounted(out_, token, content);
}

void Reply::ChangeText(Environment what, const std::string& value, const std::string& old) {
  Writer content;
  content.U8(static_cast<unsigned>(what));
  content.ShortText(value);
  content.ShortText(old);
  WriteCounted(out_, kEnvironmentToken, content);
}

void Reply::ChangeTransaction(Environment what) {
  Writer content;
  content.U8(static_cast<unsigned>(what));
  const bool begins = what == Environment::kBegin;
  if (!begins) content.U8(0);
  content.U8(sizeof kTransactionDescriptor);
  content.U64(kTransactionDescriptor);
  if (begins) content.U8(0);
  WriteCounted(out_, kEnvironmentToken, content);
}

void Reply::ChangeCollation() {
  Writer content;
  content.U8(static_cast<unsigned>(Environment::kCollation));
  content.U8(5);
  WriteCollation(content);
  content.U8(0);
  WriteCounted(out_, kEnvironmentToken, content);
}

void Reply::AcceptLogin() {
  Writer content;
  content.U8(1);
  // The one number that goes with its first byte ahead.
  content.U32(0x04000074);
  content.ShortText("Microsoft SQL Server");
  content.U32(0x00000010);
  WriteCounted(out_, kLoginToken, content);
}

void Reply::Done(unsigned token, unsigned status, std::int64_t count) {
  last_done_ = out_.bytes().size();
  out_.U8(token);
  out_.U16(status);
  out_.U16(0);
  out_.U64(static_cast<std::uint64_t>(count));
}

void Reply::StatementDone(unsigned status, std::int64_t count) {
  Done(in_procedure_ ? kInProcedureDoneToken : kDoneToken, kMore | status, count);
}

void Reply::ProcedureEnded(std::int64_t return_value) {
  in_procedure_ = false;
  out_.U8(kReturnStatusToken);
  out_.U32(static_cast<std::uint32_t>(return_value));
  Done(kProcedureDoneToken, kMore, 0);
}

void Reply::Rows(const std::vector<localdb::Column>& columns, Recordset& rows) {
  const RowFormat format(columns, rows);
  format.WriteColumns(out_);
  int number = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    const std::size_t begin = out_.bytes().size();
    format.WriteRow(out_, rows);
    CutAt(++number, begin);
  }
  StatementDone(kCounted, rows.RecordCount());
}

void Reply::CutAt(int row, std::size_t row_begin) {
  if (!fault_ || cut_) return;
  if (fault_->kind == FaultKind::kCutInResult && row == fault_->rows) cut_ = out_.bytes().size();
  if (fault_->kind == FaultKind::kCutInsideRow && row == fault_->rows + 1)
    cut_ = row_begin + (out_.bytes().size() - row_begin) / 2;
}

void Reply::Changed(std::int64_t count) {
  StatementDone(kCounted, count);
}

void Reply::Failed(const localdb::SqlError& error) {
  Error(error.native(), error.description());
  StatementDone(kFailed, 0);
}

void Reply::Finish(bool failed, bool in_transaction) {
  constexpr std::size_t kDoneSize = 13;
  const bool follows_done = !in_procedure_ && last_done_ && *last_done_ + kDoneSize == out_.bytes().size();
  if (!follows_done) Done(kDoneToken, 0, 0);
  char& status = out_.bytes()[*last_done_ + 1];
  unsigned bits = static_cast<unsigned char>(status) & ~kMore;
  if (failed) bits |= kFailed;
  if (in_transaction) bits |= kInTransaction;
  status = static_cast<char>(bits);
}

void Reply::FinishAttention() {
  Done(kDoneToken, kAttention, 0);
}

}  // namespace luming::tds
