#include "office/xml_input.h"

#include <libxml/xmlreader.h>

#include "office/read_failures.h"

namespace luming {

struct XmlInput::Reader {
  ~Reader() {
    if (reader) xmlFreeTextReader(reader);
  }
  xmlTextReaderPtr reader = nullptr;
};

namespace {

std::string_view ViewOf(const xmlChar* text) {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

}  // namespace

XmlInput::XmlInput(std::string_view bytes) : reader_(std::make_unique<Reader>()) {
  constexpr int kQuietly = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT;
  reader_->reader = xmlReaderForMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kQuietly);
  if (!reader_->reader) throw DamagedWorkbook();
}

XmlInput::~XmlInput() = default;

XmlInput::Step XmlInput::Next() {
  xmlTextReaderPtr const reader = reader_->reader;
  in_attributes_ = false;
  if (std::exchange(ends_at_once_, false)) return Step::kEnd;
  for (int result = xmlTextReaderRead(reader); result != 0; result = xmlTextReaderRead(reader)) {
    if (result < 0) throw DamagedWorkbook();
    switch (xmlTextReaderNodeType(reader)) {
      case XML_READER_TYPE_ELEMENT:
        name_ = ViewOf(xmlTextReaderConstLocalName(reader));
        ends_at_once_ = xmlTextReaderIsEmptyElement(reader) == 1;
        return Step::kStart;
      case XML_READER_TYPE_END_ELEMENT:
        name_ = ViewOf(xmlTextReaderConstLocalName(reader));
        return Step::kEnd;
      case XML_READER_TYPE_TEXT:
      case XML_READER_TYPE_CDATA:
      case XML_READER_TYPE_WHITESPACE:
      case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
        return Step::kText;
      case XML_READER_TYPE_DOCUMENT_TYPE:
        throw DamagedWorkbook();
      default:
        break;
    }
  }
  return Step::kDone;
}

bool XmlInput::NextAttribute() {
  xmlTextReaderPtr const reader = reader_->reader;
  const int moved =
      in_attributes_ ? xmlTextReaderMoveToNextAttribute(reader) : xmlTextReaderMoveToFirstAttribute(reader);
  in_attributes_ = moved == 1;
  if (!in_attributes_) {
    xmlTextReaderMoveToElement(reader);
    return false;
  }
  attribute_name_ = ViewOf(xmlTextReaderConstLocalName(reader));
  attribute_value_ = ViewOf(xmlTextReaderConstValue(reader));
  return true;
}

std::optional<std::string> XmlInput::Attribute(std::string_view name) {
  std::optional<std::string> found;
  EachAttribute([&](std::string_view each, std::string_view value) {
    if (each == name) found = value;
  });
  return found;
}

std::string_view XmlInput::Text() const {
  return ViewOf(xmlTextReaderConstValue(reader_->reader));
}

}  // namespace luming
