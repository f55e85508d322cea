#pragma once

#include <filesystem>

#include "platform/devices.h"

namespace luming {

/// Where the programs of the operating system lie.
class Cls_SysDir {
 public:
  explicit Cls_SysDir(Devices& devices) : devices_(devices) {}
  std::filesystem::path GetSysDir() const { return devices_.SystemDirectory(); }

 private:
  Devices& devices_;
};

}  // namespace luming
