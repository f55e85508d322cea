#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace luming::localdb {

enum class TokenKind : std::uint8_t {
  kEnd,
  kWord,      ///< a keyword or a plain name
  kQuoted,    ///< a name in brackets or double quotes
  kVariable,  ///< @name or @@name
  kString,
  kNumber,
  kSymbol,
};

struct Token {
  TokenKind kind;
  std::uint32_t begin;      ///< offset in the text
  std::uint32_t size;       ///< bytes, quotes included
  std::uint32_t literal;    ///< of a string or number: its place among the literals; else how many came before
  std::uint32_t key_begin;  ///< offset in the key
};

/// A string or number of the text.
struct Literal {
  std::string_view text;  ///< of a string what stands between the quotes
  bool is_string;
  bool has_quotes;  ///< doubled quotes are in it

  std::string Unquoted() const;
};

/// A text cut into tokens, and its key: the text with a mark in place of each number and each string. Texts that differ
/// in their literals alone have the same key. Refers to the text it was made from, which must outlive it.
class LexedText {
 public:
  /// Throws SqlError 102 at a character that belongs to no token, 105 at a quote without its end. May be called again:
  /// the buffers are kept.
  void Lex(std::string_view text);
  /// Finds literals and key alone, which is all that a statement seen before needs, at a fraction of the time; the
  /// tokens are not to be asked for. The key is empty where the text needs a closer look.
  void Skim(std::string_view text);

  std::string_view text() const { return text_; }
  const std::vector<Token>& tokens() const { return tokens_; }  ///< the last one is kEnd
  const std::vector<Literal>& literals() const { return literals_; }
  std::string_view key() const { return key_; }  ///< of the whole text, without what stands ahead of its first token

  std::string_view TextOf(const Token& token) const { return text_.substr(token.begin, token.size); }
  /// The key of the tokens from `first` up to but not including `last`.
  std::string_view KeyOf(std::size_t first, std::size_t last) const;
  /// The text from token `first` to the end of the token before `last`.
  std::string_view Slice(std::size_t first, std::size_t last) const;

 private:
  std::size_t Start(std::string_view text);
  std::size_t SkipBlanksAndComments(std::size_t at) const;
  std::size_t EndOfComment(std::size_t at) const;
  std::size_t LexToken(std::size_t at);
  std::size_t SkipToLiteral(std::size_t at) const;
  std::size_t SkimLiteral(std::size_t at);
  std::size_t LexString(std::size_t at, std::size_t quote);
  std::size_t LexQuotedName(std::size_t at, char close);
  /// Behind the closing quote; npos without one.
  std::size_t EndOfString(std::size_t quote, bool& has_quotes) const;
  std::size_t LexNumber(std::size_t at);
  std::size_t EndOfNumber(std::size_t at) const;
  std::size_t LexSymbol(std::size_t at);
  void Append(TokenKind kind, std::size_t begin, std::size_t end);
  void AppendLiteral(TokenKind kind, std::size_t begin, std::size_t end, const Literal& literal);

  std::string_view text_;
  std::vector<Token> tokens_;
  std::vector<Literal> literals_;
  std::string key_;
  std::size_t in_key_ = 0;  ///< so much of the text stands in the key already
};

}  // namespace luming::localdb
