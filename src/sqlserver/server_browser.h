#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// One place on the network where a SQL Server Browser may answer.
struct BrowserPlace {
  std::string address;  ///< four numbers with points
  bool many = true;     ///< a broadcast address
  unsigned short port = 1434;
};

/// The servers that an answer of a SQL Server Browser names, as a data source takes them: "HOST" for a default
/// instance, "HOST\INSTANCE" for any other. Nothing for bytes that are no such answer.
std::vector<std::string> ServersOf(std::string_view answer);

/// This machine and the broadcast addresses of its networks.
std::vector<BrowserPlace> PlacesOfNetwork();

/// Asks all places and gathers what is answered until the time is over. Sorted, each name once. A network that cannot
/// be reached gives no names.
std::vector<std::string> AskBrowsers(const std::vector<BrowserPlace>& places, std::chrono::milliseconds patience);

}  // namespace luming
