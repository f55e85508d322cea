#pragma once

#include <string>

#include "util/failure.h"

namespace luming {

/// Why a workbook cannot be read.
inline Failure UnreadableWorkbook(const std::string& why) {
  return {failure::kFileAccess, why, "电子表格"};
}
inline Failure DamagedWorkbook() {
  return UnreadableWorkbook("工作簿已经损坏，无法读取。请在 Excel 或 WPS 中打开，另存为新文件后再试。");
}
inline Failure LockedWorkbook() {
  return UnreadableWorkbook("工作簿设有打开密码，无法读取。请在 Excel 或 WPS 中取消密码，保存后再试。");
}
inline Failure TooLargeWorkbook() {
  return UnreadableWorkbook("工作表太大，无法读取。请删除多余的行和列，或者分成几个文件。");
}

}  // namespace luming
