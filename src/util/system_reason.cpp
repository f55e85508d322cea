#include "util/system_reason.h"

#include <cerrno>

namespace luming {

std::string SystemReason(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
      return "没有权限";
    case EROFS:
      return "磁盘是只读的";
    case ENOENT:
    case ENOTDIR:
      return "没有这个目录";
    case ENOSPC:
    case EDQUOT:
      return "磁盘空间不足";
    case EISDIR:
      return "不是普通文件";
    case EFBIG:
      return "文件太大";
    case EIO:
      return "磁盘读写出错";
    case EMFILE:
    case ENFILE:
      return "打开的文件太多";
    default:
      return "系统错误 " + std::to_string(error);
  }
}

}  // namespace luming
