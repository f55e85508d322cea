// Saves receipts without end, to be killed while it does: "begin NUMBER LINES" goes out ahead of each save, "saved"
// behind.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "localdb/local_connection.h"
#include "support/document_desk.h"

using namespace luming;

namespace {

constexpr int kMostReceipts = 5000;
constexpr int kMostLines = 30;

void Tell(const std::string& line) {
  const std::string bytes = line + "\n";
  if (write(STDOUT_FILENO, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::exit(1);
}

void SaveReceipts(const std::filesystem::path& home, int seed) {
  const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  auto connection = std::make_shared<LocalConnection>(home, clock);
  connection->Open("Data Source=(localdb);Initial Catalog=lumndata;");
  ReceiptDesk desk(home, connection, clock);
  Tell("ready");
  for (int i = 0; i < kMostReceipts; ++i) {
    const int lines = 1 + (seed + i) * 7 % kMostLines;
    const std::string words = std::to_string(lines);
    desk.Write(desk.LinesOf(i, lines, "P" + std::to_string((seed + i) % 50)), words);
    Tell("begin " + desk.NextNumber() + " " + words);
    if (!desk.Save()) return;
    Tell("saved");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: receipt_saver DIRECTORY SEED\n");
    return 2;
  }
  try {
    SaveReceipts(argv[1], std::atoi(argv[2]));
  } catch (const Failure& failure) {
    std::fprintf(stderr, "%s\n", failure.description().c_str());
  }
  return 1;
}
