#include "app/absent_output.h"

#include "util/failure.h"

namespace luming {

NoPrinter& NoPrinter::Instance() {
  static NoPrinter instance;
  return instance;
}

void NoPrinter::Refuse() {
  throw Failure(failure::kFileAccess, "本程序没有打印组件。");
}

NoWorkbooks& NoWorkbooks::Instance() {
  static NoWorkbooks instance;
  return instance;
}

void NoWorkbooks::Refuse() {
  throw Failure(failure::kFileAccess, "本程序没有工作簿组件。");
}

}  // namespace luming
