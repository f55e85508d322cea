#pragma once

#include "platform/printing.h"
#include "platform/workbook.h"

namespace luming {

/// Stands in for the printer where there is none: every request is a Failure.
class NoPrinter : public Printing {
 public:
  static NoPrinter& Instance();

  void Print(const PrintJob&) override { Refuse(); }
  void Preview(const PrintJob&) override { Refuse(); }
  void Print(const PrintDocument&) override { Refuse(); }
  void Preview(const PrintDocument&) override { Refuse(); }
  std::string LastPages() const override { return {}; }

 private:
  [[noreturn]] static void Refuse();
};

/// The same for workbooks.
class NoWorkbooks : public Workbooks {
 public:
  static NoWorkbooks& Instance();

  void Save(const std::filesystem::path&, const Sheet&, const Progress&) override { Refuse(); }
  std::unique_ptr<SheetReader> Read(const std::filesystem::path&) override { Refuse(); }
  std::unique_ptr<Workbook> Open(const std::filesystem::path&, const std::string&) override { Refuse(); }

 private:
  [[noreturn]] static void Refuse();
};

}  // namespace luming
