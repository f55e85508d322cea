// The test server as a program of its own, for operator scripts.

#include <iostream>
#include <string>
#include <vector>

#include "tds_server/tds_server.h"
#include "util/date_text.h"
#include "util/text.h"

using namespace luming;

namespace {

constexpr const char* kUsage = R"(usage: tds_server DIRECTORY DATE
Serves the stores of the directory on 127.0.0.1 until its input ends; its clock stands at the date. Tells its port in a
line. Orders, one a line:
  fault KIND [skip=N] [times=N] [rows=N] [number=N] [PART OF A STATEMENT]
Kinds: refuse-login refuse-database silent-login cut-login garbage-login
       cut-before cut-during cut-after cut-in-result cut-inside-row silent slow late deadlock garbage error
)";

/// Throws Failure for what is no number.
int Number(const std::string& text) {
  const bool digits = !text.empty() && text.size() < 9 && text.find_first_not_of("0123456789") == std::string::npos;
  if (!digits && text != "-1") throw Failure(failure::kInvalidCall, "no number: " + text);
  return std::stoi(text);
}

/// Takes "skip=2" and its like; false for any other word.
bool ReadSetting(const std::string& word, tds::Fault& fault) {
  const std::pair<std::string_view, int*> settings[] = {
      {"skip=", &fault.skip}, {"times=", &fault.times}, {"rows=", &fault.rows}, {"number=", &fault.number}};
  for (const auto& [name, value] : settings) {
    if (!word.starts_with(name)) continue;
    *value = Number(word.substr(name.size()));
    return true;
  }
  return false;
}

/// Throws Failure for what is no order.
tds::Fault ReadFault(const std::string& order) {
  const std::vector<std::string> words = Split(order, " ");
  const auto kind = words.size() > 1 && words[0] == "fault" ? tds::FindFaultKind(words[1]) : std::nullopt;
  if (!kind) throw Failure(failure::kInvalidCall, kUsage);
  tds::Fault fault{.kind = *kind};
  std::size_t at = 2;
  while (at < words.size() && ReadSetting(words[at], fault)) ++at;
  fault.statement = Join({words.begin() + static_cast<std::ptrdiff_t>(at), words.end()}, " ");
  return fault;
}

void Serve(const std::string& directory, const std::string& now) {
  const FixedClock clock(CDate(now, {}));
  tds::TdsServer server(directory, clock);
  std::cout << "port " << server.Port() << std::endl;
  for (std::string order; std::getline(std::cin, order);) {
    try {
      server.Misbehave(ReadFault(order));
      std::cout << "ok" << std::endl;
    } catch (const Failure& failure) {
      std::cout << failure.description() << std::endl;
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << kUsage;
    return 2;
  }
  try {
    Serve(argv[1], argv[2]);
    return 0;
  } catch (const Failure& failure) {
    std::cerr << failure.description() << "\n";
    return 2;
  }
}
