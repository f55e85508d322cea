#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "demand.h"
#include "screen/forms.h"
#include "screen/grid.h"
#include "script/headless_desktop.h"

using namespace luming;

namespace {

class GridForm : public Form {
 public:
  explicit GridForm(Forms& registry) : Form(registry, "GridForm", "grid", WindowKind::kChild) {}
  Layout Arrange() const override { return Column({grid}); }
  Grid grid{this, "grid", {"a", "b", "c"}};
};

/// Puts magic and a right checksum around the input, so that the fuzzer gets past both.
std::string AsGridFile(const std::uint8_t* data, std::size_t size) {
  std::string bytes = "LMGRID\r\n";
  bytes.append(reinterpret_cast<const char*>(data), size);
  std::uint32_t sum = 2166136261U;
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>((sum >> shift) & 0xFFU);
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("luming-fuzz-grid-" + std::to_string(getpid()));
  std::ofstream(file, std::ios::binary) << AsGridFile(data, size);
  HeadlessDesktop desktop;
  const FixedClock clock(DateTime(2026, 3, 1));
  Forms forms(desktop, clock);
  GridForm form(forms);
  form.grid.SetMaxRows(1);
  form.grid.SetText(1, 1, "before");
  try {
    form.grid.LoadFromFile(file);
    Demand(form.grid.MaxCols() == 3);
    for (int row = 1; row <= form.grid.MaxRows(); ++row) form.grid.Text(row, 3);
    form.grid.SaveToFile(file);
    form.grid.LoadFromFile(file);
  } catch (const Failure&) {
    Demand(form.grid.MaxRows() == 1 && form.grid.Text(1, 1) == "before");
  }
  std::filesystem::remove(file);
  return 0;
}
