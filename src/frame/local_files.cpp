#include "frame/local_files.h"

#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr std::size_t kLargestFile = 1U << 20;

std::filesystem::path LastUserFile(const AppContext& app) {
  return app.AppPath / "User.data";
}

std::size_t StartOf(int record) {
  return static_cast<std::size_t>(record - 1) * ConnectionFile::kRecordLength;
}

std::size_t LengthAt(std::string_view bytes, std::size_t start) {
  const auto byte = [&](std::size_t offset) -> std::size_t {
    return static_cast<unsigned char>(bytes[start + offset]);
  };
  return byte(0) | byte(1) << 8U;
}

}  // namespace

std::string ReadRecord(std::string_view bytes, int record) {
  const std::size_t start = StartOf(record);
  if (start >= bytes.size()) return {};
  if (bytes.size() - start < 2) throw StandardFailure(failure::kPastEndOfFile);
  const std::size_t length = LengthAt(bytes, start);
  if (length > ConnectionFile::kLongestText) throw StandardFailure(failure::kBadRecordLength);
  if (bytes.size() - start - 2 < length) throw StandardFailure(failure::kPastEndOfFile);
  return FromAnsi(bytes.substr(start + 2, length));
}

ConnectionFile::ConnectionFile(const std::filesystem::path& directory) : file_(directory / "DatabaseSet.data") {
  if (auto bytes = ReadWholeFile(file_, kLargestFile)) {
    bytes_ = std::move(*bytes);
  } else {
    ReplaceFile(file_, {}, FileAccess::kOwnerOnly);
  }
}

std::string ConnectionFile::Read(int record) const {
  return ReadRecord(bytes_, record);
}

void ConnectionFile::Write(int record, std::string_view text) {
  const std::string ansi = ToAnsi(text);
  if (ansi.size() > kLongestText) throw StandardFailure(failure::kBadRecordLength);
  const std::size_t start = StartOf(record);
  if (bytes_.size() < start + kRecordLength) bytes_.resize(start + kRecordLength, '\0');
  bytes_[start] = static_cast<char>(ansi.size());
  bytes_[start + 1] = '\0';
  bytes_.replace(start + 2, ansi.size(), ansi);
}

void ConnectionFile::Save() const {
  ReplaceFile(file_, bytes_, FileAccess::kOwnerOnly);
}

std::string ConnectionStringOf(const ConnectionFields& fields) {
  return "Provider=sqloledb;Data Source=" + fields.server + ";Initial Catalog=" + fields.database +
         ";User ID=" + fields.user + ";Password=" + fields.password + ";";
}

std::string ReadConnStr(AppContext& app) {
  try {
    return ConnectionFile(app.AppPath).Read(1);
  } catch (const Failure& failure) {
    app.desktop.MsgBox({"出错信息：" + failure.description(), 0, "读取连接字符串时出错"});
    return {};
  }
}

std::string LastUserOf(std::string_view bytes) {
  return FromAnsi(bytes.substr(0, bytes.find_first_of(std::string_view("\r\n\0", 3))));
}

std::string ReadLastUser(const AppContext& app) {
  try {
    const std::string bytes = ReadWholeFile(LastUserFile(app), kLargestFile).value_or(std::string());
    return LastUserOf(bytes);
  } catch (const Failure&) {
    return {};
  }
}

void WriteLastUser(const AppContext& app, std::string_view name) {
  try {
    ReplaceFile(LastUserFile(app), ToAnsi(name) + "\r\n");
  } catch (const Failure&) {
  }
}

}  // namespace luming
