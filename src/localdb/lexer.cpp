#include "localdb/lexer.h"

#include <algorithm>

#include "localdb/char_class.h"
#include "localdb/errors.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// So much of an unfinished text is shown in an error.
constexpr std::size_t kShownText = 60;

}  // namespace

std::string Literal::Unquoted() const {
  return has_quotes ? Replace(text, "''", "'") : std::string(text);
}

std::string_view LexedText::KeyOf(std::size_t first, std::size_t last) const {
  std::size_t begin = tokens_[first].key_begin;
  return std::string_view(key_).substr(begin, tokens_[last].key_begin - begin);
}

std::string_view LexedText::Slice(std::size_t first, std::size_t last) const {
  if (first >= last) return {};
  std::size_t begin = tokens_[first].begin;
  const Token& end = tokens_[last - 1];
  return text_.substr(begin, end.begin + end.size - begin);
}

std::size_t LexedText::Start(std::string_view text) {
  text_ = text;
  tokens_.clear();
  literals_.clear();
  key_.clear();
  return in_key_ = SkipBlanksAndComments(0);
}

void LexedText::Lex(std::string_view text) {
  std::size_t at = Start(text);
  while (at < text_.size()) {
    at = LexToken(at);
    // Most tokens follow each other closely.
    bool gap = at < text_.size() && (ClassOf(text_[at]) == kBlank || text_[at] == '-' || text_[at] == '/');
    if (gap) at = SkipBlanksAndComments(at);
  }
  Append(TokenKind::kEnd, text_.size(), text_.size());
  key_.append(text_.substr(in_key_));
}

std::size_t LexedText::SkipBlanksAndComments(std::size_t at) const {
  while (at < text_.size()) {
    char c = text_[at];
    char next = at + 1 < text_.size() ? text_[at + 1] : '\0';
    if (ClassOf(c) == kBlank) {
      ++at;
    } else if (c == '-' && next == '-') {
      at = std::min(text_.find('\n', at), text_.size());
    } else if (c == '/' && next == '*') {
      at = EndOfComment(at);
    } else {
      break;
    }
  }
  return at;
}

/// Comments of this kind stand inside each other.
std::size_t LexedText::EndOfComment(std::size_t at) const {
  int depth = 0;
  do {
    const std::string_view mark = text_.substr(at, 2);
    if (mark.size() < 2) throw SqlError(native::kOpenComment);
    depth += mark == "/*" ? 1 : mark == "*/" ? -1 : 0;
    at += mark == "/*" || mark == "*/" ? 2 : 1;
  } while (depth > 0);
  return at;
}

std::size_t LexedText::LexToken(std::size_t at) {
  char c = text_[at];
  if (c == '\'') return LexString(at, at);
  if ((c == 'N' || c == 'n') && text_.compare(at + 1, 1, "'") == 0) return LexString(at, at + 1);
  if (c == '[') return LexQuotedName(at, ']');
  if (c == '"') return LexQuotedName(at, '"');
  bool point_number = c == '.' && at + 1 < text_.size() && ClassOf(text_[at + 1]) == kDigit;
  if (ClassOf(c) == kDigit || point_number) return LexNumber(at);
  if (ClassOf(c) != kLetter && c != '@') return LexSymbol(at);
  std::size_t end = at + 1;
  while (end < text_.size() && ContinuesName(text_[end])) ++end;
  if (c == '@' && end == at + 1) throw SqlError(native::kSyntax, "@");
  Append(c == '@' ? TokenKind::kVariable : TokenKind::kWord, at, end);
  return end;
}

std::size_t LexedText::LexString(std::size_t at, std::size_t quote) {
  bool has_quotes = false;
  const std::size_t end = EndOfString(quote, has_quotes);
  if (end == std::string_view::npos) throw SqlError(native::kOpenQuote, Left(text_.substr(quote + 1), kShownText));
  AppendLiteral(TokenKind::kString, at, end, {text_.substr(quote + 1, end - quote - 2), true, has_quotes});
  return end;
}

std::size_t LexedText::EndOfString(std::size_t quote, bool& has_quotes) const {
  for (std::size_t end = quote + 1;; end += 2) {
    end = text_.find('\'', end);
    if (end == std::string_view::npos) return end;
    if (end + 1 >= text_.size() || text_[end + 1] != '\'') return end + 1;
    has_quotes = true;
  }
}

std::size_t LexedText::LexQuotedName(std::size_t at, char close) {
  std::size_t end = text_.find(close, at + 1);
  if (end == std::string_view::npos) throw SqlError(native::kOpenQuote, Left(text_.substr(at + 1), kShownText));
  if (end == at + 1) throw SqlError(native::kSyntax, text_.substr(at, 2));
  Append(TokenKind::kQuoted, at, end + 1);
  return end + 1;
}

std::size_t LexedText::LexNumber(std::size_t at) {
  const std::size_t end = EndOfNumber(at);
  AppendLiteral(TokenKind::kNumber, at, end, {text_.substr(at, end - at), false, false});
  return end;
}

std::size_t LexedText::EndOfNumber(std::size_t at) const {
  std::size_t end = at;
  auto digits = [&] {
    while (end < text_.size() && ClassOf(text_[end]) == kDigit) ++end;
  };
  digits();
  if (end < text_.size() && text_[end] == '.') {
    ++end;
    digits();
  }
  if (end < text_.size() && (text_[end] == 'e' || text_[end] == 'E')) {
    std::size_t exponent = end + 1;
    if (exponent < text_.size() && (text_[exponent] == '+' || text_[exponent] == '-')) ++exponent;
    if (exponent < text_.size() && ClassOf(text_[exponent]) == kDigit) {
      end = exponent;
      digits();
    }
  }
  return end;
}

std::size_t LexedText::LexSymbol(std::size_t at) {
  if (ClassOf(text_[at]) != kOperator) throw SqlError(native::kSyntax, text_.substr(at, 1));
  char c = text_[at];
  if (c == ',' || c == '(' || c == ')') {  // most symbols are these
    Append(TokenKind::kSymbol, at, at + 1);
    return at + 1;
  }
  // <> <= >= != !< !> += -= *= /=
  char next = at + 1 < text_.size() ? text_[at + 1] : '\0';
  bool comparison = c == '<' || c == '>' || c == '!';
  bool compound = c == '+' || c == '-' || c == '*' || c == '/';
  bool pair =
      next == '=' ? comparison || compound : (c == '<' && next == '>') || (c == '!' && (next == '<' || next == '>'));
  std::size_t size = pair ? 2 : 1;
  Append(TokenKind::kSymbol, at, at + size);
  return at + size;
}

void LexedText::Append(TokenKind kind, std::size_t begin, std::size_t end) {
  tokens_.push_back({kind, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin),
                     static_cast<std::uint32_t>(literals_.size()),
                     static_cast<std::uint32_t>(key_.size() + begin - in_key_)});
}

void LexedText::AppendLiteral(TokenKind kind, std::size_t begin, std::size_t end, const Literal& literal) {
  Append(kind, begin, end);
  literals_.push_back(literal);
  key_.append(text_.substr(in_key_, begin - in_key_));
  key_.push_back(literal.is_string ? kStringMark : kNumberMark);
  in_key_ = end;
}

}  // namespace luming::localdb
