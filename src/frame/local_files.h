#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "frame/app_context.h"

namespace luming {

/// `DatabaseSet.data`: fixed records of 128 bytes, each a text of at most 126 bytes of code page 936 behind its length
/// in two bytes, low byte first. What follows the text within a record has no meaning. Holds the database password
/// readable, so only the file's owner may read it.
class ConnectionFile {
 public:
  static constexpr std::size_t kRecordLength = 128;
  static constexpr std::size_t kLongestText = kRecordLength - 2;

  /// The records that have a meaning.
  enum Record { kConnectionString = 1, kServer = 2, kDatabase = 5, kUser = 6, kPassword = 7 };

  /// Opens the application directory's file, which comes into being empty when it is missing. Failure kFileAccess.
  explicit ConnectionFile(const std::filesystem::path& directory);

  /// @param record from 1; one past the end of the file reads as an empty text. Failure kBadRecordLength for a length
  /// that no record holds, kPastEndOfFile for a text that the file's end cuts off.
  std::string Read(int record) const;
  /// Changes the record's length and text, no other byte. Failure kBadRecordLength for a text that does not fit.
  void Write(int record, std::string_view text);
  /// Brings what was written to the disk, in one step. Failure kFileAccess; the file is as before then.
  void Save() const;

 private:
  std::filesystem::path file_;
  std::string bytes_;
};

/// What the connection dialog asks for.
struct ConnectionFields {
  std::string server;
  std::string database;
  std::string user;
  std::string password;
};

/// The fields as a connection string, each as it stands.
std::string ConnectionStringOf(const ConnectionFields& fields);

/// Text of the records of `bytes`, as ConnectionFile::Read gives it.
std::string ReadRecord(std::string_view bytes, int record);

/// The connection string of the last connection dialog. A failure is shown and gives an empty text.
std::string ReadConnStr(AppContext& app);

/// The first line of what `User.data` holds.
std::string LastUserOf(std::string_view bytes);
/// The operator who logged in last; empty when that cannot be read.
std::string ReadLastUser(const AppContext& app);
/// Errors are ignored: the next login just starts without a name.
void WriteLastUser(const AppContext& app, std::string_view name);

}  // namespace luming
