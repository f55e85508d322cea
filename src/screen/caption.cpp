#include "screen/caption.h"

#include "util/text.h"

namespace luming {
namespace {

bool TakeEnd(std::string& text, std::string_view end) {
  if (!text.ends_with(end)) return false;
  text.resize(text.size() - end.size());
  return true;
}

}  // namespace

std::string PlainCaption(std::string_view caption) {
  std::string plain(caption);
  if (const auto open = plain.find("(&"); open != std::string::npos) {
    if (const auto close = plain.find(')', open); close != std::string::npos) plain.erase(open, close - open + 1);
  }
  plain = Replace(plain, "&", "");
  while (TakeEnd(plain, " ") || TakeEnd(plain, ":") || TakeEnd(plain, "：")) {
  }
  return Trim(plain);
}

char Mnemonic(std::string_view caption) {
  const auto mark = caption.find('&');
  if (mark == std::string_view::npos || mark + 1 == caption.size()) return 0;
  const char letter = UpperAscii(caption.substr(mark + 1, 1))[0];
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ? letter : '\0';
}

}  // namespace luming
