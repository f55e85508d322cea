#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// Walks through an XML text. Names are told without their prefix.
class XmlInput {
 public:
  enum class Step { kStart, kEnd, kText, kDone };

  /// @param bytes outlive it
  explicit XmlInput(std::string_view bytes);
  ~XmlInput();

  /// What comes next. Failure when the text is not well-formed, or has a document type, which no workbook needs.
  Step Next();
  /// Of the element that just started or ended.
  std::string_view Name() const { return name_; }
  /// Of the element that just started. Valid until the next step.
  std::optional<std::string> Attribute(std::string_view name);
  /// Calls `take(name, value)` for each attribute of the element that just started.
  template <class Take>
  void EachAttribute(Take take) {
    while (NextAttribute()) take(attribute_name_, attribute_value_);
  }
  /// The text just met.
  std::string_view Text() const;

 private:
  struct Reader;
  bool NextAttribute();

  std::unique_ptr<Reader> reader_;
  std::string name_;
  std::string_view attribute_name_;
  std::string_view attribute_value_;
  bool ends_at_once_ = false;  ///< the element that just started has no inside and no end of its own
  bool in_attributes_ = false;
};

}  // namespace luming
