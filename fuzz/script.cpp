#include <cstdint>

#include "demand.h"
#include "script/script_driver.h"
#include "util/text.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::vector<StepSyntax>& syntaxes = ScriptDriver::Syntaxes();
  try {
    int line = 0;
    for (const ScriptStep& step : ParseScript(text, syntaxes)) {
      Demand(step.line > line);
      line = step.line;
      Demand(step.kind < syntaxes.size() && step.arguments.size() >= syntaxes[step.kind].arguments);
      for (const std::string& argument : step.arguments) Demand(IsValidUtf8(argument));
      if (step.raw_tail.empty()) continue;
      Demand(SplitTail(step.raw_tail, 0).size() == 1);
    }
  } catch (const ScriptProblem& problem) {
    Demand(!problem.what.empty() && problem.line >= 0);
  }
  return 0;
}
