#include "script/script_parser.h"

#include <gtest/gtest.h>

#include <array>

namespace luming {
namespace {

constexpr std::array kSyntaxes = {
    StepSyntax{"go", 0, Tail::kNone, ""},
    StepSyntax{"go far", 1, Tail::kNone, "N"},
    StepSyntax{"say", 1, Tail::kText, "WHO TEXT"},
    StepSyntax{"start", 0, Tail::kMaybeText, "[TEXT]"},
    StepSyntax{"ask", 0, Tail::kArrowText, "Q => A"},
};

using Texts = std::vector<std::string>;

std::string Refusal(std::string_view text) {
  try {
    ParseScript(text, kSyntaxes);
  } catch (const ScriptProblem& problem) {
    return std::to_string(problem.line) + ": " + problem.what;
  }
  return "read";
}

TEST(ScriptParser, TellsWhatIsWrongAndWhere) {
  struct Case {
    std::string_view text;
    std::string_view problem;
  };
  const Case cases[] = {
      {"go\nfly", "2: unknown step \"fly\""},
      {"\"go\"", "1: unknown step \"\"go\"\""},
      {"go now", "1: \"now\" is too much; an argument with blanks stands in quotes: go "},
      {"go far", "1: an argument is missing: go far N"},
      {"go far 1 2", "1: \"2\" is too much; an argument with blanks stands in quotes: go far N"},
      {"say", "1: an argument is missing: say WHO TEXT"},
      {"say me", "1: an argument is missing: say WHO TEXT"},
      {"say me # nothing", "1: an argument is missing: say WHO TEXT"},
      {"say me \"open", "1: a quote is not closed: say WHO TEXT"},
      {"say me \"open\\\"", "1: a quote is not closed: say WHO TEXT"},
      {"say me \"a\" b", "1: \"b\" is too much; an argument with blanks stands in quotes: say WHO TEXT"},
      {"ask a", "1: \"=>\" is missing: ask Q => A"},
      {"ask \"a\" b", "1: \"=>\" is missing behind the first text: ask Q => A"},
      {"\n\ngo\xFF", "3: the line is not UTF-8"},
  };
  for (const Case& each : cases) EXPECT_EQ(Refusal(each.text), each.problem) << each.text;
  EXPECT_EQ(Refusal(std::string(17U << 20, '#')), "0: the script is larger than 16 MB");
}

TEST(ScriptParser, ReadsEveryForm) {
  struct Case {
    std::string_view text;
    std::size_t kind;
    Texts arguments;
  };
  const Case cases[] = {
      {"go", 0, {}},
      {"  go\t # away\r", 0, {}},
      {"go far 7", 1, {"7"}},
      {"go far \"a b\"", 1, {"a b"}},
      {"say 品名 两个 字  ", 2, {"品名", "两个 字"}},
      {"say \"两 字\" \"a\\n\\tb\\\"\\\\ c\\MB\\\"\"", 2, {"两 字", "a\n\tb\"\\ c\\MB\""}},
      {"say me \"\"", 2, {"me", ""}},
      {"say me select \"x\" from #t # the table", 2, {"me", "select \"x\" from #t"}},
      {"start", 3, {}},
      {"start a$b$c$", 3, {"a$b$c$"}},
      {"ask select 1 => 1", 4, {"select 1", "1"}},
      {"ask \"a => b\" => \"1\\t2\"", 4, {"a => b", "1\t2"}},
      {"ask select 1 => \"\"", 4, {"select 1", ""}},
      {"ask select 1 =>", 4, {"select 1", ""}},
  };
  for (const Case& each : cases) {
    const std::vector<ScriptStep> steps = ParseScript(each.text, kSyntaxes);
    ASSERT_EQ(steps.size(), 1U) << each.text;
    EXPECT_EQ(steps[0].kind, each.kind) << each.text;
    EXPECT_EQ(steps[0].arguments, each.arguments) << each.text;
  }
}

TEST(ScriptParser, CountsLinesOverCommentsAndMarks) {
  const auto steps = ParseScript("\xEF\xBB\xBFgo\r\n# comment\r\n\r\n  #\r\ngo far 1", kSyntaxes);
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0].line, 1);
  EXPECT_EQ(steps[1].line, 5);
}

TEST(ScriptParser, SplitsATailLater) {
  EXPECT_EQ(SplitTail("3 \"品 名\" a b", 2), (Texts{"3", "品 名", "a b"}));
  EXPECT_EQ(SplitTail("3 2 \"\"", 2), (Texts{"3", "2", ""}));
  EXPECT_THROW(SplitTail("3 2", 2), ScriptProblem);
}

}  // namespace
}  // namespace luming
