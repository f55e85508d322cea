#include "script/script_parser.h"

#include <algorithm>

#include "util/text.h"

namespace luming {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kLargestScript = 16U << 20;

bool IsBlank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
}

[[noreturn]] void Fail(std::string what) {
  throw ScriptProblem{0, std::move(what)};
}

/// One line, taken from the front.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest_(line) { SkipBlanks(); }

  bool AtEnd() const { return rest_.empty() || IsComment(rest_); }
  bool AtQuote() const { return rest_.starts_with('"'); }

  /// The next word as it stands, without taking it; empty before a quote.
  std::string_view PeekWord() const { return AtEnd() || AtQuote() ? std::string_view() : FirstWord(rest_); }

  std::string Argument() {
    if (AtQuote()) return Quoted();
    const std::string_view word = FirstWord(rest_);
    Drop(word.size());
    return std::string(word);
  }

  /// The text to the end of the line. One in quotes must be all that is left.
  std::string Text() {
    if (!AtQuote()) return std::string(TakeRaw());
    std::string text = Quoted();
    DemandEnd();
    return text;
  }

  std::string_view Raw() const {
    std::string_view raw = rest_;
    for (std::size_t at = 0; at < raw.size(); ++at) {
      if (IsBlank(raw[at]) && at + 1 < raw.size() && IsComment(raw.substr(at + 1))) raw = raw.substr(0, at);
    }
    const auto last = raw.find_last_not_of(kBlanks);
    return raw.substr(0, last == std::string_view::npos ? 0 : last + 1);
  }

  /// The text ahead of " => ".
  std::string TextAheadOfArrow() {
    if (AtQuote()) {
      std::string text = Quoted();
      if (FirstWord(rest_) != "=>") Fail("\"=>\" is missing behind the first text");
      Drop(2);
      return text;
    }
    const auto arrow = rest_.find(" =>");
    if (arrow == std::string_view::npos) Fail("\"=>\" is missing");
    std::string text(TrimRight(rest_.substr(0, arrow)));
    Drop(arrow + 3);
    return text;
  }

  void DemandEnd() const {
    if (!AtEnd()) Fail("\"" + std::string(Raw()) + "\" is too much; an argument with blanks stands in quotes");
  }

 private:
  static bool IsComment(std::string_view text) {
    return text.starts_with('#') && (text.size() == 1 || IsBlank(text[1]));
  }
  static std::string_view FirstWord(std::string_view text) { return text.substr(0, text.find_first_of(kBlanks)); }

  void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size())); }
  void Drop(std::size_t count) {
    rest_.remove_prefix(count);
    SkipBlanks();
  }
  std::string_view TakeRaw() {
    const std::string_view raw = Raw();
    rest_ = {};
    return raw;
  }

  std::string Quoted() {
    std::string text;
    for (std::size_t at = 1; at < rest_.size(); ++at) {
      const char c = rest_[at];
      if (c == '"') {
        Drop(at + 1);
        return text;
      }
      const char next = c == '\\' && at + 1 < rest_.size() ? rest_[at + 1] : '\0';
      constexpr std::string_view kEscapes = "nt\"\\";
      const auto escape = next == '\0' ? std::string_view::npos : kEscapes.find(next);
      if (escape == std::string_view::npos) {
        text += c;  // a backslash of a path stays
      } else {
        text += "\n\t\"\\"[escape];
        ++at;
      }
    }
    Fail("a quote is not closed");
  }

  std::string_view rest_;
};

/// Takes the words off the line; false, and nothing taken, when it does not begin with them.
bool TakeWords(LineReader& line, std::string_view words) {
  LineReader ahead = line;
  for (const std::string& word : Split(words, " ")) {
    if (ahead.PeekWord() != word) return false;
    ahead.Argument();
  }
  line = ahead;
  return true;
}

std::size_t TakeKind(LineReader& line, std::span<const StepSyntax> syntaxes) {
  std::size_t best = syntaxes.size();
  LineReader behind = line;
  for (std::size_t kind = 0; kind < syntaxes.size(); ++kind) {
    const bool longer = best == syntaxes.size() || syntaxes[kind].words.size() > syntaxes[best].words.size();
    LineReader ahead = line;
    if (!longer || !TakeWords(ahead, syntaxes[kind].words)) continue;
    best = kind;
    behind = ahead;
  }
  if (best == syntaxes.size()) Fail("unknown step \"" + std::string(line.Raw()) + "\"");
  line = behind;
  return best;
}

void TakeArguments(LineReader& line, std::size_t count, std::vector<std::string>& arguments) {
  for (; count > 0; --count) {
    if (line.AtEnd()) Fail("an argument is missing");
    arguments.push_back(line.Argument());
  }
}

void TakeTail(LineReader& line, Tail tail, ScriptStep& step) {
  step.raw_tail = line.Raw();
  if (tail == Tail::kNone) return line.DemandEnd();
  if (tail == Tail::kMaybeText && line.AtEnd()) return;
  if (line.AtEnd()) Fail("an argument is missing");
  if (tail == Tail::kArrowText) step.arguments.push_back(line.TextAheadOfArrow());
  step.arguments.push_back(line.Text());
}

ScriptStep ParseStep(std::string_view text, std::span<const StepSyntax> syntaxes) {
  LineReader line(text);
  ScriptStep step;
  step.kind = TakeKind(line, syntaxes);
  const StepSyntax& syntax = syntaxes[step.kind];
  try {
    TakeArguments(line, syntax.arguments, step.arguments);
    TakeTail(line, syntax.tail, step);
  } catch (ScriptProblem& problem) {
    problem.what += ": " + std::string(syntax.words) + " " + std::string(syntax.usage);
    throw;
  }
  return step;
}

bool IsEmptyLine(std::string_view line) {
  const auto first = line.find_first_not_of(kBlanks);
  return first == std::string_view::npos || line[first] == '#';
}

}  // namespace

std::vector<ScriptStep> ParseScript(std::string_view text, std::span<const StepSyntax> syntaxes) {
  if (text.size() > kLargestScript) Fail("the script is larger than 16 MB");
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<ScriptStep> steps;
  int number = 0;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    ++number;
    try {
      if (!IsValidUtf8(line)) Fail("the line is not UTF-8");
      if (IsEmptyLine(line)) continue;
      steps.push_back(ParseStep(line, syntaxes));
      steps.back().line = number;
    } catch (ScriptProblem& problem) {
      problem.line = number;
      throw;
    }
  }
  return steps;
}

std::vector<std::string> SplitTail(std::string_view raw_tail, std::size_t arguments) {
  LineReader line(raw_tail);
  std::vector<std::string> parts;
  TakeArguments(line, arguments, parts);
  if (line.AtEnd()) Fail("an argument is missing");
  parts.push_back(line.Text());
  return parts;
}

}  // namespace luming
