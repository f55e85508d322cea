#pragma once

#include "platform/workbook.h"

namespace luming {

/// Writes workbooks itself; fills and prints templates through an office program of its own, which is started with the
/// first template and ends with this object. Without such a program only templates fail.
class OfficeWorkbooks : public Workbooks {
 public:
  void Save(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) override;
  std::unique_ptr<Workbook> Open(const std::filesystem::path& file, const std::string& title) override;
};

}  // namespace luming
