#pragma once

#include "office/find_office.h"
#include "platform/printing.h"
#include "platform/workbook.h"

namespace luming {

/// Writes and reads workbooks itself; fills and prints each template through an office program of its own. Without such
/// a program only templates fail.
class OfficeWorkbooks : public Workbooks {
 public:
  /// @param printing prints and previews filled templates; outlives this
  /// @param office directory of the office program
  explicit OfficeWorkbooks(Printing& printing, std::filesystem::path office = FindOffice())
      : printing_(printing), office_(std::move(office)) {}

  void Save(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) override;
  std::unique_ptr<SheetReader> Read(const std::filesystem::path& file) override;
  std::unique_ptr<Workbook> Open(const std::filesystem::path& file, const std::string& title) override;

 private:
  Printing& printing_;
  std::filesystem::path office_;
};

}  // namespace luming
