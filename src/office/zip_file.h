#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// The parts of a zip container.
class ZipFile {
 public:
  /// @param bytes outlive it. Failure when they are none
  explicit ZipFile(std::string_view bytes);
  ~ZipFile();

  bool Has(std::string_view path) const;
  /// The part's bytes, unpacked; nothing when there is no such part. Failure when it is damaged or so large that it can
  /// only be meant to do harm.
  std::optional<std::string> Read(std::string_view path) const;

 private:
  struct Container;
  std::unique_ptr<Container> container_;
};

}  // namespace luming
