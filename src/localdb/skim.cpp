// The quick look at a text: its literals and its key.
#include <algorithm>

#include "localdb/char_class.h"
#include "localdb/lexer.h"

namespace luming::localdb {

void LexedText::Skim(std::string_view text) {
  std::size_t copied = Start(text);
  key_.resize(text_.size());
  char* key = key_.data();
  while (copied < text_.size()) {
    const std::size_t begin = SkipToLiteral(copied);
    key = std::copy_n(text_.data() + copied, begin - copied, key);
    if (begin == text_.size()) break;
    const std::size_t end = SkimLiteral(begin);
    if (end == std::string_view::npos) return key_.clear();
    *key++ = literals_.back().is_string ? kStringMark : kNumberMark;
    copied = end;
  }
  key_.resize(static_cast<std::size_t>(key - key_.data()));
}

/// The end of the literal; npos if none stands there, or an unfinished one.
std::size_t LexedText::SkimLiteral(std::size_t at) {
  const CharClass begins = ClassOf(text_[at]);
  if (begins == kDigit || text_[at] == '.') {
    const std::size_t end = EndOfNumber(at);
    literals_.push_back({text_.substr(at, end - at), false, false});
    return end;
  }
  const std::size_t quote = begins == kLetter ? at + 1 : at;
  if (text_[quote] != '\'') return std::string_view::npos;
  bool has_quotes = false;
  const std::size_t end = EndOfString(quote, has_quotes);
  if (end != std::string_view::npos) {
    literals_.push_back({text_.substr(quote + 1, end - quote - 2), true, has_quotes});
  }
  return end;
}

/// To a literal, or to what takes a closer look.
std::size_t LexedText::SkipToLiteral(std::size_t at) const {
  while (at < text_.size()) {
    const char c = text_[at];
    const char next = at + 1 < text_.size() ? text_[at + 1] : '\0';
    switch (ClassOf(c)) {
      case kBlank:
        break;
      case kLetter:
        if (next == '\'' && (c == 'N' || c == 'n')) return at;
        while (at + 1 < text_.size() && ContinuesName(text_[at + 1])) ++at;
        break;
      case kOperator: {
        const bool comment = (c == '-' && next == '-') || (c == '/' && next == '*');
        if (comment || (c == '.' && ClassOf(next) == kDigit)) return at;
        break;
      }
      default:
        return at;
    }
    ++at;
  }
  return at;
}

}  // namespace luming::localdb
