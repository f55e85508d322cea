#include <algorithm>
#include <charconv>
#include <iterator>

#include "localdb/errors.h"
#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// Deeper than any statement of a person, and far from the end of a stack.
constexpr int kDeepest = 120;

// Words that cannot be names without brackets. Sorted.
constexpr std::string_view kReserved[] = {
    "ADD",        "ALL",      "ALTER",       "AND",      "AS",       "ASC",       "BEGIN",      "BETWEEN",
    "BREAK",      "BY",       "CASE",        "CHECK",    "CLOSE",    "COLLATE",   "COLUMN",     "COMMIT",
    "CONSTRAINT", "CONTINUE", "CONVERT",     "CREATE",   "CROSS",    "CURSOR",    "DEALLOCATE", "DECLARE",
    "DEFAULT",    "DELETE",   "DESC",        "DISTINCT", "DROP",     "ELSE",      "END",        "EXCEPT",
    "EXEC",       "EXECUTE",  "EXISTS",      "FETCH",    "FOR",      "FOREIGN",   "FROM",       "FULL",
    "GO",         "GOTO",     "GROUP",       "HAVING",   "IDENTITY", "IF",        "IN",         "INDEX",
    "INNER",      "INSERT",   "INTERSECT",   "INTO",     "IS",       "JOIN",      "KEY",        "LEFT",
    "LIKE",       "NOT",      "NULL",        "OF",       "ON",       "OPEN",      "OR",         "ORDER",
    "OUTER",      "OVER",     "PRIMARY",     "PRINT",    "PROC",     "PROCEDURE", "RAISERROR",  "REFERENCES",
    "RETURN",     "RIGHT",    "ROLLBACK",    "SELECT",   "SET",      "TABLE",     "THEN",       "TO",
    "TOP",        "TRAN",     "TRANSACTION", "TRIGGER",  "TRUNCATE", "UNION",     "UNIQUE",     "UPDATE",
    "USE",        "USER",     "VALUES",      "VIEW",     "WHEN",     "WHERE",     "WHILE",      "WITH"};

}  // namespace

Parser::Level::Level(Parser& parser) : parser_(parser) {
  if (parser_.depth_ >= kDeepest) throw SqlError(native::kNestedTooDeep);
  ++parser_.depth_;
}

const Token& Parser::Peek(std::size_t ahead) const {
  const auto& tokens = lexed_.tokens();
  return tokens[std::min(at_ + ahead, tokens.size() - 1)];
}

bool Parser::PeekWord(std::string_view word, std::size_t ahead) const {
  return Peek(ahead).kind == TokenKind::kWord && EqualsIgnoreCase(PeekText(ahead), word);
}

bool Parser::PeekAnyWord(std::initializer_list<std::string_view> words) const {
  return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return PeekWord(word); });
}

bool Parser::PeekSymbol(std::string_view symbol, std::size_t ahead) const {
  return Peek(ahead).kind == TokenKind::kSymbol && PeekText(ahead) == symbol;
}

bool Parser::PeekReserved(std::size_t ahead) const {
  if (Peek(ahead).kind != TokenKind::kWord) return false;
  return std::binary_search(std::begin(kReserved), std::end(kReserved), UpperAscii(PeekText(ahead)));
}

bool Parser::PeekName() const {
  return Peek().kind == TokenKind::kQuoted || (Peek().kind == TokenKind::kWord && !PeekReserved());
}

bool Parser::TakeWord(std::string_view word) {
  if (!PeekWord(word)) return false;
  ++at_;
  return true;
}

bool Parser::TakeSymbol(std::string_view symbol) {
  if (!PeekSymbol(symbol)) return false;
  ++at_;
  return true;
}

void Parser::ExpectWord(std::string_view word) {
  if (!TakeWord(word)) Fail();
}

void Parser::ExpectSymbol(std::string_view symbol) {
  if (!TakeSymbol(symbol)) Fail();
}

std::string Parser::ExpectName() {
  if (!PeekName()) Fail();
  std::string_view text = PeekText();
  if (Peek().kind == TokenKind::kQuoted) text = text.substr(1, text.size() - 2);
  ++at_;
  return std::string(text);
}

std::string Parser::ExpectObjectName() {
  std::string schema;
  std::string name = ExpectName();
  while (TakeSymbol(".")) {
    schema = name;
    while (TakeSymbol(".")) schema.clear();
    name = ExpectName();
  }
  bool system = EqualsIgnoreCase(schema, "sys") || EqualsIgnoreCase(schema, "INFORMATION_SCHEMA");
  return system ? schema + "." + name : name;
}

std::string Parser::ExpectVariable() {
  if (Peek().kind != TokenKind::kVariable) Fail();
  std::string name(PeekText());
  ++at_;
  return name;
}

int Parser::ExpectInteger() {
  bool negative = TakeSymbol("-");
  if (Peek().kind != TokenKind::kNumber) Fail();
  std::string_view digits = PeekText();
  int value = 0;
  auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) Fail();
  ++at_;
  return negative ? -value : value;
}

std::vector<std::string> Parser::ExpectNameList() {
  std::vector<std::string> names;
  ExpectSymbol("(");
  do {
    names.push_back(ExpectName());
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  return names;
}

void Parser::Fail() const {
  std::size_t near = at_;
  bool at_end = Peek().kind == TokenKind::kEnd;
  if (at_end && near > 0) --near;
  std::string_view text = lexed_.TextOf(lexed_.tokens()[near]);
  throw SqlError(!at_end && PeekReserved() ? native::kSyntaxKeyword : native::kSyntax, Left(text, 60));
}

}  // namespace luming::localdb
