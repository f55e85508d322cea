// One workstation of several: saves receipts and returns to the supplier, in turn and of the same batch of the same
// drugs, and tells of each attempt what became of it and how long it took. Or it confirms issue notes that all the
// others confirm at the same time.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/composition.h"
#include "documents/screens.h"
#include "support/document_desk.h"

using namespace luming;

namespace {

constexpr int kLines = 3;
constexpr const char* kBatch = "共用批";

void WriteReturn(DocumentDesk& desk, const std::vector<ReceiptDesk::Line>& lines) {
  desk.Choose("sGHDW", "云泊医药有限公司");
  desk.Choose("sFHR", "吕静仪");
  Grid& grid = desk.Lines();
  grid.SetMaxRows(static_cast<int>(lines.size()));
  int row = 0;
  for (const ReceiptDesk::Line& line : lines) {
    ++row;
    const auto put = [&](int column, const std::string& text) { grid.SetText(row, column, text); };
    put(supplier_return::kCode, line[0]);
    put(supplier_return::kName, line[1]);
    put(supplier_return::kQuantity, "1.5");
    put(supplier_return::kPurchasePrice, "3.25");
    put(supplier_return::kBatch, kBatch);
    put(supplier_return::kRatio, "1");
  }
}

/// Tries until the document is saved.
template <class Save>
void Persist(const char* what, Save save) {
  constexpr int kMostTries = 20;
  for (int attempt = 0; attempt < kMostTries; ++attempt) {
    const auto begin = std::chrono::steady_clock::now();
    const bool saved = save();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    std::printf("%s %s %.1f\n", saved ? "saved" : "failed", what, took.count());
    if (saved) return;
  }
  std::exit(1);
}

void Work(const std::filesystem::path& home, const char* address, int documents) {
  const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  std::shared_ptr<Connection> connection = NewConnection(home, clock);
  connection->Open(address);
  ReceiptDesk receipts(home, connection, clock);
  DocumentDesk returns(kReturnToSupplier, home, connection, clock);
  const std::vector<ReceiptDesk::Line> lines = receipts.LinesOf(0, kLines, kBatch);
  for (int i = 0; i < documents; ++i) {
    if (i % 2 == 0) {
      receipts.Write(lines, "1");
      Persist("receipt", [&] { return receipts.Save(); });
    } else {
      WriteReturn(returns, lines);
      Persist("return", [&] { return returns.Save(); });
    }
  }
}

void ConfirmAll(const std::filesystem::path& home, const char* address, int notes) {
  const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  std::shared_ptr<Connection> connection = NewConnection(home, clock);
  connection->Open(address);
  ConfirmingDesk desk(home, connection, clock);
  for (int note = 1; note <= notes; ++note) {
    desk.Open("N" + std::to_string(note));
    std::printf("%s\n", desk.Confirm() ? "closed" : "kept open");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: busy_client DIRECTORY CONNECTION DOCUMENTS [confirm]\n");
    return 2;
  }
  try {
    (argc == 4 ? Work : ConfirmAll)(argv[1], argv[2], std::atoi(argv[3]));
    return 0;
  } catch (const Failure& failure) {
    std::printf("failure %s\n", failure.description().c_str());
    return 1;
  }
}
