#include "documents/document_lines.h"

#include "util/date_text.h"

namespace luming {

std::string ExpirySent(const std::string& expiry) {
  return IsDate(expiry) ? "'" + expiry + "'" : "Null";
}

bool ConfirmSave(Desktop& desktop, const Grid& lines) {
  const Box question{"你确定要执行此操作吗？请检查。", box::kQuestion + box::kYesNo, "系统提示"};
  if (desktop.MsgBox(question) != Answer::kYes) return false;
  if (lines.MaxRows() > 0) return true;
  desktop.MsgBox({"系统提示您:\r\n\r\n入库项目明细不能为空", box::kStop, "提示"});
  return false;
}

}  // namespace luming
