#pragma once

#include <string>

namespace luming {

/// The bytes of an OLE2 container that holds one stream. Failure when it cannot be made.
std::string OleFileWith(const std::string& stream_name, const std::string& stream);

}  // namespace luming
