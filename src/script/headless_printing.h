#pragma once

#include <string>

#include "platform/printing.h"

namespace luming {

/// A print port without printer and window: lays every job out and keeps its pages as text.
class HeadlessPrinting : public Printing {
 public:
  void Print(const PrintJob& job) override;
  void Preview(const PrintJob& job) override { Print(job); }
  void Print(const PrintDocument& document) override;
  void Preview(const PrintDocument& document) override { Print(document); }
  std::string LastPages() const override { return pages_; }

 private:
  std::string pages_;
};

}  // namespace luming
