#include "office/read_back.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

#include "util/text.h"

namespace luming {

namespace {

std::string Output(const std::string& command, int& status) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + command);
  std::array<char, 65536> block{};
  for (std::size_t got; (got = fread(block.data(), 1, block.size(), pipe)) > 0;) output.append(block.data(), got);
  status = pclose(pipe);
  return output;
}

}  // namespace

std::string CommandOutput(const std::string& command) {
  int status = 0;
  std::string output = Output(command, status);
  if (status != 0) throw std::runtime_error(command + " failed: " + output);
  return output;
}

std::vector<std::string> ReadBack(const std::string& reader, const std::filesystem::path& file) {
  int status = 0;
  const std::string output =
      Output("/usr/bin/python3 " LUMING_READ_WORKBOOK " " + reader + " '" + file.string() + "' 2>&1", status);
  if (status != 0) return {"failed: " + output};
  std::vector<std::string> lines = Split(output, "\n");
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

std::vector<std::string> NamesIn(const std::filesystem::path& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) names.push_back(entry.path().filename());
  std::ranges::sort(names);
  return names;
}

}  // namespace luming
