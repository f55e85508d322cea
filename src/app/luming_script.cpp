#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "app/composition.h"
#include "script/headless_desktop.h"
#include "script/headless_printing.h"
#include "script/script_driver.h"
#include "util/failure.h"

namespace luming {
namespace {

constexpr int kCannot = 2;

constexpr const char* kUsage =
    "usage: luming-script [--home DIR] [--trace FILE] SCRIPT...\n"
    "  Runs operator scripts with nothing drawn, each in a process state of its own.\n"
    "  --home DIR    application directory, unless the script names one\n"
    "  --trace FILE  appends every statement that is sent, with rows and time\n"
    "  Ends with 0 when every expectation held, 1 when one failed, 2 when a step could not be carried out.\n";

struct BadUsage {
  std::string what;
};

struct Request {
  std::filesystem::path home = ProgramDirectory();
  std::filesystem::path trace;
  std::vector<std::filesystem::path> scripts;
};

Request ReadArguments(const std::vector<std::string>& arguments) {
  Request request;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--home" || argument == "--trace") {
      if (i + 1 == arguments.size()) throw BadUsage{argument + " needs a value"};
      (argument == "--home" ? request.home : request.trace) = arguments[++i];
    } else if (argument.starts_with("--")) {
      throw BadUsage{"unknown option " + argument};
    } else {
      request.scripts.emplace_back(argument);
    }
  }
  if (request.scripts.empty()) throw BadUsage{"no script is named"};
  return request;
}

int RunScript(const Request& request, const std::filesystem::path& script) {
  HeadlessDesktop desktop;
  HeadlessPrinting printing;
  Program program(desktop, printing, Machine::kUntouched, request.home);
  if (!request.trace.empty()) program.TraceTo(request.trace);
  ScriptDriver driver(desktop, program, std::cout, std::cerr);
  driver.ReadFile(script);
  return RunHeadless(driver, desktop);
}

int RunAll(const std::vector<std::string>& arguments) {
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    std::cout << kUsage;
    return 0;
  }
  try {
    const Request request = ReadArguments(arguments);
    int worst = 0;
    for (const std::filesystem::path& script : request.scripts) worst = std::max(worst, RunScript(request, script));
    return worst;
  } catch (const BadUsage& bad) {
    std::cerr << "luming-script: " << bad.what << "\n" << kUsage;
  } catch (const std::exception& fault) {
    std::cerr << "luming-script: " << AsFailure(fault).description() << "\n";
  }
  return kCannot;
}

}  // namespace
}  // namespace luming

int main(int count, char** arguments) {
  return luming::RunAll({arguments + 1, arguments + count});
}
