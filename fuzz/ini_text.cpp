#include "frame/ini_text.h"

#include <cstdint>

#include "demand.h"
#include "util/text.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  IniText text(bytes);
  for (const char* key : {"药库类型", "a", ""}) {
    const auto value = text.Find("配置", key);
    Demand(!value || IsValidUtf8(*value));
  }
  const auto other = text.Find("a", "b");
  text.Set("配置", "预警天数", "7");
  const IniText read_back(text.Bytes());
  Demand(read_back.Find("配置", "预警天数") == "7");
  // Beside a mark of the encoding that turns up or goes, the other keys are as they were.
  Demand(read_back.Find("a", "b").has_value() == other.has_value());
  return 0;
}
