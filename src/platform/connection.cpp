#include "platform/database.h"
#include "platform/statement.h"

namespace luming {

Recordset Connection::Execute(const Statement& statement) {
  if (!statement.flaw().empty()) {
    Refuse(statement.text(), {failure::kSyntax, statement.flaw(), StandardFailure(failure::kSyntax).source()});
  }
  return Execute(std::string_view(statement.text()));
}

void Connection::Refuse(std::string_view, const Failure& reason) {
  throw reason;
}

}  // namespace luming
