#include "util/failure.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>

#include "util/whole_file.h"

namespace luming {

namespace {

struct StandingText {
  long number;
  const char* description;
  const char* source;
};

constexpr const char* kProgram = "luming";
constexpr const char* kRecordset = "ADODB.Recordset";
constexpr const char* kConnection = "ADODB.Connection";

constexpr std::array kStandingTexts = {
    StandingText{failure::kInvalidCall, "无效的过程调用或参数", kProgram},
    StandingText{failure::kOverflow, "溢出", kProgram},
    StandingText{failure::kOutOfMemory, "内存溢出", kProgram},
    StandingText{failure::kSubscript, "下标越界", kProgram},
    StandingText{failure::kDivisionByZero, "除数为零", kProgram},
    StandingText{failure::kTypeMismatch, "类型不匹配", kProgram},
    StandingText{failure::kInternal, "内部错误", kProgram},
    StandingText{failure::kFileNotFound, "文件未找到", kProgram},
    StandingText{failure::kBadRecordLength, "错误的记录长度", kProgram},
    StandingText{failure::kPastEndOfFile, "输入超出文件尾", kProgram},
    StandingText{failure::kFileAccess, "路径/文件访问错误", kProgram},
    StandingText{failure::kInvalidNull, "无效使用 Null", kProgram},
    StandingText{failure::kBadArgument, "参数类型不正确，或不在可以接受的范围之内，或与其他参数冲突。", kRecordset},
    StandingText{failure::kNoCurrentRow,
                 "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。", kRecordset},
    StandingText{failure::kNoSuchField, "在对应所需名称或序数的集合中，未找到项目。", kRecordset},
    StandingText{failure::kClosedObject, "对象关闭时，不允许操作。", kRecordset},
    StandingText{failure::kBadConnection, "连接无法用于执行此操作。在此上下文中它可能已被关闭或无效。", kConnection},
    StandingText{failure::kGeneralProvider, "未指定的错误", kConnection},
    StandingText{failure::kSyntax, "语法错误或违反访问规则。", kConnection},
    StandingText{failure::kMissingObject, "对象名无效。", kConnection},
    StandingText{failure::kKeyViolation, "违反了数据的完整性约束。", kConnection},
    StandingText{failure::kConversion, "数据类型转换出错。", kConnection},
    StandingText{failure::kDataOverflow, "数据溢出或将被截断。", kConnection},
};

}  // namespace

Failure StandardFailure(long number) {
  const auto found = std::ranges::find(kStandingTexts, number, &StandingText::number);
  if (found == kStandingTexts.end()) return {number, "应用程序定义或对象定义错误", kProgram};
  return {number, found->description, found->source};
}

Failure AsFailure(const std::exception& fault) {
  if (const auto* failure = dynamic_cast<const Failure*>(&fault)) return *failure;
  if (const auto* denied = dynamic_cast<const std::filesystem::filesystem_error*>(&fault)) {
    return NoFileAccess(denied->path1(), denied->code().value());
  }
  if (dynamic_cast<const std::bad_alloc*>(&fault)) return StandardFailure(failure::kOutOfMemory);
  const Failure unnamed = StandardFailure(failure::kInternal);
  return {unnamed.number(), unnamed.description() + "：" + fault.what(), unnamed.source()};
}

}  // namespace luming
