#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// The bytes of an OLE2 container that holds one stream. Failure when it cannot be made.
std::string OleFileWith(const std::string& stream_name, const std::string& stream);

/// Those of the named streams that the container holds, without regard to case. Failure when it is damaged.
std::map<std::string, std::string> OleStreams(std::string_view container, const std::vector<std::string>& names);

}  // namespace luming
