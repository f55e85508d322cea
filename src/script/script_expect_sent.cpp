#include <algorithm>

#include "script/script_driver.h"
#include "script/script_names.h"
#include "util/text.h"

namespace luming {
namespace {

std::string RowsAsText(Recordset rows) {
  std::string text;
  if (!rows.IsOpen()) return text;
  for (bool first_row = true; !rows.Eof(); rows.MoveNext(), first_row = false) {
    if (!first_row) text += '\n';
    for (std::size_t col = 0; col < rows.ColumnCount(); ++col) {
      const Value& value = std::as_const(rows).Field(col);
      if (col > 0) text += '\t';
      text += value.IsNull() ? "NULL" : value.Text();
    }
  }
  return text;
}

std::string AllStatements(const std::vector<TracedStatement>& sent) {
  std::vector<std::string> texts;
  for (const TracedStatement& statement : sent) texts.push_back(statement.sql);
  return Join(texts, "\n");
}

bool WasSent(const std::vector<TracedStatement>& sent, const std::string& text) {
  return std::any_of(sent.begin(), sent.end(), [&](const TracedStatement& statement) {
    return WithPlainLineEnds(statement.sql).find(text) != std::string::npos;
  });
}

}  // namespace

void ScriptDriver::ExpectSql(const ScriptStep& step) {
  if (!WasSent(host_.Statements(), step.arguments[0])) Compare(step.arguments[0], AllStatements(host_.Statements()));
}

void ScriptDriver::ExpectNoSql(const ScriptStep& step) {
  if (!WasSent(host_.Statements(), step.arguments[0])) return;
  Compare("not " + step.arguments[0], AllStatements(host_.Statements()));
}

void ScriptDriver::ExpectVoice(const ScriptStep& step) {
  const std::vector<std::string>& spoken = host_.Spoken();
  const std::string& wanted = step.arguments[0];
  if (std::ranges::count(spoken, wanted) == 0) Compare(wanted, spoken.empty() ? "no voice" : Join(spoken, "\n"));
}

void ScriptDriver::ExpectNoVoice(const ScriptStep&) {
  if (!host_.Spoken().empty()) Compare("no voice", Join(host_.Spoken(), "\n"));
}

void ScriptDriver::ExpectSetting(const ScriptStep& step) {
  Compare(step.arguments[2], host_.ReadSetting(step.arguments[0], step.arguments[1]));
}

void ScriptDriver::ExpectPages(const ScriptStep& step) {
  const std::string pages = host_.LastPages();
  if (pages.find(step.arguments[0]) == std::string::npos) Compare(step.arguments[0], pages);
}

void ScriptDriver::ExpectQuery(const ScriptStep& step) {
  Compare(step.arguments[1], RowsAsText(host_.RunBeside(step.arguments[0])));
}

}  // namespace luming
