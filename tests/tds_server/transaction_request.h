#pragma once

#include <string>
#include <string_view>

namespace luming::tds {

/// The text that does what a transaction manager's request asks for. Throws ProtocolError for any other than to begin,
/// to commit and to roll back.
std::string TransactionText(std::string_view body);

}  // namespace luming::tds
