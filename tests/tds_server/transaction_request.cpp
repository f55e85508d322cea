#include "tds_server/transaction_request.h"

#include "tds_server/wire.h"

namespace luming::tds {
namespace {

constexpr unsigned kBegin = 5;
constexpr unsigned kCommit = 7;
constexpr unsigned kRollback = 8;

// Behind the name of what ends stands whether the next transaction begins at once.
std::string WithNext(std::string text, Reader& reader) {
  reader.Raw(reader.U8());
  const bool begins_next = (reader.U8() & 1) != 0;
  return begins_next ? text + " BEGIN TRANSACTION" : text;
}

}  // namespace

std::string TransactionText(std::string_view body) {
  Reader reader(body);
  reader.MoveTo(reader.U32());
  switch (reader.U16()) {
    case kBegin:
      return "BEGIN TRANSACTION";
    case kCommit:
      return WithNext("COMMIT TRANSACTION", reader);
    case kRollback:
      return WithNext("WHILE @@TRANCOUNT > 0 ROLLBACK TRANSACTION", reader);
    default:
      throw ProtocolError("a request that this server does not know");
  }
}

}  // namespace luming::tds
