#include "localdb/errors.h"

#include <algorithm>
#include <array>

#include "platform/server_errors.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

struct ErrorEntry {
  int native;
  Reach reach;
  std::string_view text;
};

// The one list of error numbers and texts. Sorted by the server's number.
constexpr std::array kErrors = {
    ErrorEntry{102, Reach::kBatch, "“%1”附近有语法错误。"},
    ErrorEntry{105, Reach::kBatch, "字符串“%1”后的引号不完整。"},
    ErrorEntry{109, Reach::kBatch, "INSERT 语句中列的数目大于 VALUES 子句中指定的值的数目。"},
    ErrorEntry{110, Reach::kBatch, "INSERT 语句中列的数目小于 VALUES 子句中指定的值的数目。"},
    ErrorEntry{113, Reach::kBatch, "缺少注释的结束标记“*/”。"},
    ErrorEntry{137, Reach::kBatch, "必须声明变量“%1”。"},
    ErrorEntry{156, Reach::kBatch, "关键字“%1”附近有语法错误。"},
    ErrorEntry{174, Reach::kBatch, "函数“%1”的参数数目不对。"},
    ErrorEntry{191, Reach::kBatch, "SQL 语句的某些部分嵌套层次太深，请简化该语句。"},
    ErrorEntry{195, Reach::kBatch, "“%1”不是可以识别的内置函数名称。"},
    ErrorEntry{201, Reach::kStatement, "过程“%1”需要参数“%2”，但未提供该参数。"},
    ErrorEntry{205, Reach::kBatch, "UNION 的各个查询必须有相同数目的列。"},
    ErrorEntry{207, Reach::kBatch, "列名“%1”无效。"},
    ErrorEntry{208, Reach::kBatch, "对象名“%1”无效。"},
    ErrorEntry{209, Reach::kBatch, "列名“%1”不明确。"},
    ErrorEntry{213, Reach::kBatch, "提供的值的数目与表“%1”的列数不匹配。"},
    ErrorEntry{217, Reach::kBatch, "存储过程的嵌套层次超出了 32 层。"},
    ErrorEntry{241, Reach::kTransaction, "将文本“%1”转换为日期或时间时失败。"},
    ErrorEntry{242, Reach::kTransaction, "将文本“%1”转换为日期时，得到的值超出范围。"},
    ErrorEntry{245, Reach::kTransaction, "将文本“%1”转换为 %2 类型时失败。"},
    ErrorEntry{248, Reach::kTransaction, "文本“%1”转换为 %2 类型时溢出。"},
    ErrorEntry{512, Reach::kStatement, "子查询返回的值不止一个，不能当作一个值使用。"},
    ErrorEntry{515, Reach::kStatement, "不能将值 NULL 插入表“%2”的列“%1”，该列不允许有空值。"},
    ErrorEntry{544, Reach::kStatement, "不能为表“%1”中的标识列插入显式值。"},
    ErrorEntry{547, Reach::kStatement, "语句与约束冲突：%1。"},
    ErrorEntry{823, Reach::kTransaction, "读写数据库文件“%1”时系统报错：%2。本次操作没有完成。"},
    ErrorEntry{824, Reach::kTransaction, "数据库文件“%1”已损坏，请用备份恢复。"},
    ErrorEntry{948, Reach::kBatch, "文件“%1”不是本系统的数据库，或由更新的版本建立。"},
    ErrorEntry{1105, Reach::kTransaction, "数据库文件“%1”所在的磁盘空间不足，本次操作没有保存。请腾出空间后重试。"},
    ErrorEntry{1222, Reach::kBatch, "数据库%1正被另一个程序使用，请稍后重试。"},
    ErrorEntry{2601, Reach::kStatement, "不能在表“%1”中插入重复的键，唯一索引为“%2”。"},
    ErrorEntry{2627, Reach::kStatement, "不能在表“%1”中插入重复的键，违反了约束“%2”。"},
    ErrorEntry{2714, Reach::kStatement, "数据库中已存在名为“%1”的对象。"},
    ErrorEntry{2715, Reach::kBatch, "找不到数据类型“%1”。"},
    ErrorEntry{2812, Reach::kStatement, "找不到存储过程“%1”。"},
    ErrorEntry{3701, Reach::kStatement, "无法删除“%1”，因为它不存在。"},
    ErrorEntry{3902, Reach::kStatement, "没有已开始的事务可以提交。"},
    ErrorEntry{3903, Reach::kStatement, "没有已开始的事务可以回滚。"},
    ErrorEntry{3906, Reach::kBatch, "不能写数据库文件“%1”：%2。"},
    ErrorEntry{3998, Reach::kBatch, "此前的错误已使事务回滚，本次操作的内容没有保存。"},
    ErrorEntry{4060, Reach::kBatch, "无法打开数据库“%1”，该数据库不存在%2。"},
    ErrorEntry{4104, Reach::kBatch, "无法绑定由多个部分组成的标识符“%1”。"},
    ErrorEntry{5120, Reach::kTransaction, "系统不能打开数据库文件“%1”：%2。"},
    ErrorEntry{8114, Reach::kStatement, "将文本“%1”转换为 %2 类型时出错。"},
    ErrorEntry{8115, Reach::kStatement, "值“%1”转换为 %2 类型时溢出。"},
    ErrorEntry{8117, Reach::kBatch, "%1 类型的值不能参加“%2”运算。"},
    ErrorEntry{8120, Reach::kBatch, "列“%1”既不在聚合函数中，也不在 GROUP BY 子句中，不能出现在选择列表里。"},
    ErrorEntry{8134, Reach::kStatement, "遇到以零作除数错误。"},
    ErrorEntry{8144, Reach::kStatement, "为过程“%1”指定了过多的参数。"},
    ErrorEntry{8145, Reach::kStatement, "“%2”不是过程“%1”的参数。"},
    ErrorEntry{8152, Reach::kStatement, "文本太长，“%1”最多容纳 %2 个字节，语句已终止。"},
    ErrorEntry{8624, Reach::kBatch, "语句不能执行：%1。"},
    ErrorEntry{50000, Reach::kStatement, "%1"},
};

const ErrorEntry& Entry(int native) {
  auto found = std::find_if(kErrors.begin(), kErrors.end(), [&](const ErrorEntry& e) { return e.native == native; });
  return found == kErrors.end() ? kErrors.back() : *found;
}

std::string Describe(int native, std::string_view first, std::string_view second) {
  return Replace(Replace(Entry(native).text, "%2", second), "%1", first);
}

}  // namespace

SqlError::SqlError(int native, std::string_view first, std::string_view second)
    : Failure(AdoNumberOf(native), Describe(native, first, second), std::string(kErrorSource)),
      native_(native),
      reach_(Entry(native).reach) {}

}  // namespace luming::localdb
