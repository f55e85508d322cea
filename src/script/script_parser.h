#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// What a script or one of its steps cannot do, in one sentence for the one who wrote it.
struct ScriptProblem {
  int line = 0;  ///< 0 when it concerns the whole file, or the step that runs
  std::string what;
};

/// What follows the single arguments of a step.
enum class Tail {
  kNone,
  kText,       ///< the rest of the line
  kMaybeText,  ///< the same, and it may be missing
  kArrowText,  ///< two texts with "=>" between them
};

/// How a step is written: its words, so many single arguments, the tail.
struct StepSyntax {
  std::string_view words;
  std::size_t arguments;
  Tail tail;
  std::string_view usage;  ///< of arguments and tail, for messages
};

struct ScriptStep {
  int line = 0;
  std::size_t kind = 0;                ///< index of its syntax
  std::vector<std::string> arguments;  ///< the single ones, then the texts of the tail
  std::string raw_tail;                ///< the tail as it was written
};

/// Reads a script: one step a line; "#" at the start of a line, or between blanks behind a step, begins a comment. An
/// argument with blanks stands in quotes, within which \n is a line end, \t a tab, \" a quote and \\ a backslash. A
/// step is the one of `syntaxes` with the most words that the line begins with. Throws ScriptProblem.
std::vector<ScriptStep> ParseScript(std::string_view text, std::span<const StepSyntax> syntaxes);

/// Takes `arguments` single arguments and the text behind them from a raw tail. Throws ScriptProblem when some are
/// missing.
std::vector<std::string> SplitTail(std::string_view raw_tail, std::size_t arguments);

}  // namespace luming
