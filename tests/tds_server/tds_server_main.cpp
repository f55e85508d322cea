// The test server as a program of its own, for scripts and for trying the client by hand.

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "tds_server/tds_server.h"
#include "util/date_text.h"
#include "util/text.h"

using namespace luming;

namespace {

constexpr const char* kUsage = R"(usage: tds_server DIRECTORY [--port N] [--user NAME] [--password TEXT] [--now DATE]
Serves the stores of the directory on 127.0.0.1 until its input ends or it is told to quit. Tells its port in a line.
With --now its clock stands still.
Orders, one a line:
  fault KIND [skip=N] [times=N] [rows=N] [delay=MS] [number=N] [PART OF A STATEMENT]
  behave | stop | start | cut | quit
Kinds: refuse-login refuse-database silent-login cut-login garbage-login
       cut-before cut-during cut-after cut-in-result cut-inside-row silent slow late deadlock garbage error
)";

struct Arguments {
  std::string directory;
  tds::ServerOptions options;
  std::string now;
};

/// Throws Failure for what is no number.
int Number(const std::string& text) {
  const bool digits = !text.empty() && text.size() < 9 && text.find_first_not_of("0123456789") == std::string::npos;
  if (!digits && text != "-1") throw Failure(failure::kInvalidCall, "no number: " + text);
  return std::stoi(text);
}

Arguments ReadArguments(const std::vector<std::string>& words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool has_value = i + 1 < words.size();
    if (words[i] == "--port" && has_value) {
      arguments.options.port = Number(words[++i]);
    } else if (words[i] == "--user" && has_value) {
      arguments.options.user = words[++i];
    } else if (words[i] == "--password" && has_value) {
      arguments.options.password = words[++i];
    } else if (words[i] == "--now" && has_value) {
      arguments.now = words[++i];
    } else if (arguments.directory.empty() && !words[i].starts_with("--")) {
      arguments.directory = words[i];
    } else {
      throw Failure(failure::kInvalidCall, "not understood: " + words[i]);
    }
  }
  if (arguments.directory.empty()) throw Failure(failure::kInvalidCall, kUsage);
  return arguments;
}

/// Takes "skip=2" and its like; false for any other word.
bool ReadSetting(const std::string& word, tds::Fault& fault) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) return false;
  const std::string name = word.substr(0, equals);
  const std::string value = word.substr(equals + 1);
  if (name == "skip") {
    fault.skip = Number(value);
  } else if (name == "times") {
    fault.times = Number(value);
  } else if (name == "rows") {
    fault.rows = Number(value);
  } else if (name == "delay") {
    fault.delay = std::chrono::milliseconds(Number(value));
  } else if (name == "number") {
    fault.number = Number(value);
  } else {
    return false;
  }
  return true;
}

tds::Fault ReadFault(const std::vector<std::string>& words) {
  const auto kind = words.size() > 1 ? tds::FindFaultKind(words[1]) : std::nullopt;
  if (!kind) throw Failure(failure::kInvalidCall, kUsage);
  tds::Fault fault{.kind = *kind};
  std::size_t at = 2;
  while (at < words.size() && ReadSetting(words[at], fault)) ++at;
  fault.statement = Join({words.begin() + static_cast<std::ptrdiff_t>(at), words.end()}, " ");
  return fault;
}

/// False when the server is to end.
bool Obey(tds::TdsServer& server, const std::string& order) {
  const std::vector<std::string> words = Split(order, " ");
  const std::string& first = words.empty() ? order : words[0];
  if (first == "quit") return false;
  if (first == "fault") {
    server.Misbehave(ReadFault(words));
  } else if (first == "behave") {
    server.Behave();
  } else if (first == "stop") {
    server.Stop();
  } else if (first == "start") {
    server.Start();
  } else if (first == "cut") {
    server.CutAll();
  } else if (!first.empty()) {
    throw Failure(failure::kInvalidCall, kUsage);
  }
  return true;
}

std::unique_ptr<Clock> MakeClock(const std::string& now) {
  if (now.empty()) return std::make_unique<SystemClock>();
  const SystemClock system;
  return std::make_unique<FixedClock>(CDate(now, system.Today()));
}

void Serve(const Arguments& arguments) {
  const std::unique_ptr<Clock> clock = MakeClock(arguments.now);
  tds::TdsServer server(arguments.directory, *clock, arguments.options);
  std::cout << "port " << server.Port() << std::endl;
  for (std::string order; std::getline(std::cin, order);) {
    try {
      if (!Obey(server, order)) return;
      std::cout << "ok" << std::endl;
    } catch (const Failure& failure) {
      std::cout << failure.description() << std::endl;
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Serve(ReadArguments({argv + 1, argv + argc}));
    return 0;
  } catch (const Failure& failure) {
    std::fprintf(stderr, "%s\n", failure.description().c_str());
    return 2;
  }
}
