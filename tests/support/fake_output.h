#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/printing.h"
#include "platform/workbook.h"
#include "util/failure.h"

namespace luming {

/// A printer that keeps what it was given.
class FakePrinting : public Printing {
 public:
  std::vector<PrintJob> printed;
  std::vector<PrintJob> previewed;

  void Print(const PrintJob& job) override { printed.push_back(job); }
  void Preview(const PrintJob& job) override { previewed.push_back(job); }
  void Print(const PrintDocument&) override {}
  void Preview(const PrintDocument&) override {}
  std::string LastPages() const override { return {}; }
};

/// Keeps the sheets that were saved; there is no office program.
class FakeWorkbooks : public Workbooks {
 public:
  struct Saved {
    std::filesystem::path file;
    Sheet sheet;
  };
  std::vector<Saved> saved;
  bool refuses = false;  ///< nothing can be written

  void Save(const std::filesystem::path& file, const Sheet& sheet, const Progress&) override {
    if (refuses) throw Failure(failure::kFileAccess, "磁盘已满");
    saved.push_back({file, sheet});
  }
  std::unique_ptr<SheetReader> Read(const std::filesystem::path&) override {
    throw Failure(failure::kFileNotFound, "没有工作簿");
  }
  std::unique_ptr<Workbook> Open(const std::filesystem::path&, const std::string&) override {
    throw Failure(failure::kFileNotFound, "没有办公软件");
  }
};

}  // namespace luming
