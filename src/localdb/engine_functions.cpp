#include "localdb/engine_functions.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "localdb/collation.h"
#include "localdb/conversion.h"
#include "util/ansi_text.h"
#include "util/number_text.h"
#include "util/text.h"
#include "util/text_equality.h"

namespace luming::localdb {
namespace {

// No function makes a text longer than this.
constexpr std::size_t kLongestText = 8'000'000;

/// The arguments and the result of one call.
class Call {
 public:
  Call(sqlite3_context* context, int count, sqlite3_value** values)
      : context_(context), count_(count), values_(values) {}

  FunctionContext& shared() { return *static_cast<FunctionContext*>(sqlite3_user_data(context_)); }
  int count() const { return count_; }
  bool AnyNull() const {
    return std::any_of(values_, values_ + count_,
                       [](sqlite3_value* v) { return sqlite3_value_type(v) == SQLITE_NULL; });
  }
  bool IsNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
  std::string_view Text(int i) const {
    auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(values_[i]))};
  }
  std::int64_t Whole(int i) const { return sqlite3_value_int64(values_[i]); }
  double Number(int i) const { return sqlite3_value_double(values_[i]); }
  DateTime Date(int i) const { return FromCanonicalDate(Text(i)); }

  Datum Get(int i) const {
    switch (sqlite3_value_type(values_[i])) {
      case SQLITE_INTEGER:
        return Whole(i);
      case SQLITE_FLOAT:
        return Number(i);
      case SQLITE_NULL:
        return {};
      default:
        return std::string(Text(i));
    }
  }

  void Give(std::int64_t value) { sqlite3_result_int64(context_, value); }
  void Give(double value) { sqlite3_result_double(context_, value); }
  void Give(std::string_view text) {
    sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void GiveSame(int i) { sqlite3_result_value(context_, values_[i]); }
  void Give(const Datum& value) {
    if (auto* whole = std::get_if<std::int64_t>(&value)) Give(*whole);
    if (auto* number = std::get_if<double>(&value)) Give(*number);
    if (auto* text = std::get_if<std::string>(&value)) Give(std::string_view(*text));
  }

 private:
  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
};

using Body = void (*)(Call&);

// A NULL argument makes the result NULL; an error is kept aside for the session and stops the statement.
template <Body body, bool null_in_null_out>
void Invoke(sqlite3_context* context, int count, sqlite3_value** values) {
  Call call(context, count, values);
  if (null_in_null_out && call.AnyNull()) return;
  try {
    body(call);
  } catch (const SqlError& error) {
    call.shared().error = std::make_unique<SqlError>(error);
    sqlite3_result_error(context, error.what(), -1);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

void Cast(Call& call, Overlong overlong) {
  int style = call.count() == 4 ? static_cast<int>(call.Whole(3)) : -1;
  call.Give(Convert(call.Get(0), SqlType::Unpack(call.Whole(1)), SqlType::Unpack(call.Whole(2)), overlong, style));
}
void TCast(Call& call) {
  Cast(call, Overlong::kCut);
}
void TStore(Call& call) {
  Cast(call, Overlong::kRefuse);
}

void Divisor(Call& call) {
  if (call.Number(0) == 0) throw SqlError(native::kDivideByZero);
  call.GiveSame(0);
}

void Mod(Call& call) {
  if (call.Number(1) == 0) throw SqlError(native::kDivideByZero);
  call.Give(std::fmod(call.Number(0), call.Number(1)));
}

void Round(Call& call) {
  call.Give(RoundToScale(call.Number(0), static_cast<int>(call.Whole(1))));
}

// ROUND(x, n) with n below 0 rounds to tens and hundreds; a third argument other than 0 cuts.
void Rounded(Call& call) {
  double value = call.Number(0);
  int digits = static_cast<int>(std::clamp<std::int64_t>(call.Whole(1), -30, 30));
  bool cuts = call.count() == 3 && call.Whole(2) != 0;
  double result;
  if (cuts) {
    double power = std::pow(10.0, digits);
    result = RoundToScale(std::trunc(RoundToScale(value * power, 6)) / power, std::max(digits, 0));
  } else if (digits < 0) {
    double power = std::pow(10.0, -digits);
    result = RoundToScale(value / power, 0) * power;
  } else {
    result = RoundToScale(value, digits);
  }
  if (std::holds_alternative<std::int64_t>(call.Get(0))) {
    call.Give(static_cast<std::int64_t>(result));
  } else {
    call.Give(result);
  }
}

template <double (*function)(double)>
void Whole(Call& call) {
  if (std::holds_alternative<std::int64_t>(call.Get(0))) return call.GiveSame(0);
  call.Give(function(RoundToScale(call.Number(0), 10)));
}
double Ceil(double value) {
  return std::ceil(value);
}
double Floor(double value) {
  return std::floor(value);
}

void Like(Call& call) {
  std::size_t at = 0;
  char32_t escape = call.count() == 3 && !call.Text(2).empty() ? NextCodePoint(call.Text(2), at) : 0;
  call.Give(std::int64_t{MatchesLike(call.Text(0), call.Text(1), escape)});
}

std::string_view PlainPrefix(std::string_view pattern) {
  return pattern.substr(0, pattern.find_first_of("%_["));
}

void LikeLow(Call& call) {
  call.Give(std::string_view(TrimRight(PlainPrefix(call.Text(0)))));
}
void LikeHigh(Call& call) {
  call.Give(std::string_view(std::string(PlainPrefix(call.Text(0))) + "\xf4\x8f\xbf\xbf"));
}

void Length(Call& call) {
  const std::string_view text = call.Text(0);
  const std::string_view counted = text.substr(0, text.find_last_not_of(' ') + 1);
  const auto begins = [](char byte) { return (byte & 0xC0) != 0x80; };
  call.Give(std::int64_t{std::count_if(counted.begin(), counted.end(), begins)});
}

void DataLength(Call& call) {
  call.Give(static_cast<std::int64_t>(AnsiLength(call.Text(0))));
}

std::size_t CountOf(std::int64_t value) {
  return static_cast<std::size_t>(std::max<std::int64_t>(value, 0));
}

void RightText(Call& call) {
  call.Give(std::string_view(Right(call.Text(0), CountOf(call.Whole(1)))));
}

// A start before the text takes from the length what lies ahead of it.
void Substring(Call& call) {
  std::int64_t start = call.Whole(1);
  std::int64_t end = start > 0 && call.Whole(2) > INT64_MAX - start ? INT64_MAX : start + call.Whole(2);
  start = std::max<std::int64_t>(start, 1);
  call.Give(std::string_view(Mid(call.Text(0), CountOf(start), CountOf(end - start))));
}

std::vector<char32_t> Folded(std::string_view text, std::vector<std::size_t>* offsets = nullptr) {
  std::vector<char32_t> folded;
  for (std::size_t at = 0; at < text.size();) {
    if (offsets) offsets->push_back(at);
    folded.push_back(FoldCase(NextCodePoint(text, at)));
  }
  if (offsets) offsets->push_back(text.size());
  return folded;
}

/// Whether a text can be looked for byte by byte: no character in it has a case.
bool HasNoCase(std::string_view text) {
  return std::ranges::none_of(text, [](char c) {
    return static_cast<unsigned char>(c) >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  });
}

void ReplaceText(Call& call) {
  // Most texts hold nothing of what is to be replaced, a blank in most statements.
  if (HasNoCase(call.Text(1)) && call.Text(0).find(call.Text(1)) == std::string_view::npos) return call.GiveSame(0);
  std::vector<std::size_t> offsets;
  std::vector<char32_t> text = Folded(call.Text(0), &offsets);
  std::vector<char32_t> what = Folded(call.Text(1));
  if (what.empty()) return call.GiveSame(0);
  std::string result;
  auto from = text.begin();
  auto copy = [&](auto end) {
    std::size_t begin = offsets[static_cast<std::size_t>(from - text.begin())];
    result += call.Text(0).substr(begin, offsets[static_cast<std::size_t>(end - text.begin())] - begin);
  };
  for (;;) {
    auto found = std::search(from, text.end(), what.begin(), what.end());
    copy(found);
    if (found == text.end() || result.size() > kLongestText) break;
    result += call.Text(2);
    from = found + static_cast<std::ptrdiff_t>(what.size());
  }
  call.Give(std::string_view(result));
}

void CharIndex(Call& call) {
  std::vector<char32_t> what = Folded(call.Text(0));
  std::vector<char32_t> text = Folded(call.Text(1));
  std::size_t start = call.count() == 3 ? CountOf(call.Whole(2) - 1) : 0;
  if (what.empty() || start > text.size()) return call.Give(std::int64_t{0});
  auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), what.begin(), what.end());
  call.Give(found == text.end() ? std::int64_t{0} : std::int64_t{found - text.begin() + 1});
}

void Replicate(Call& call) {
  std::string result;
  std::size_t count = CountOf(call.Whole(1));
  for (std::size_t i = 0; i < count && result.size() < kLongestText && !call.Text(0).empty(); ++i)
    result += call.Text(0);
  call.Give(std::string_view(result));
}

void Reverse(Call& call) {
  std::string result;
  std::vector<std::string> characters = Characters(call.Text(0));
  for (auto c = characters.rbegin(); c != characters.rend(); ++c) result += *c;
  call.Give(std::string_view(result));
}

void Stuff(Call& call) {
  std::int64_t start = call.Whole(1);
  std::string_view text = call.Text(0);
  if (start < 1 || start > static_cast<std::int64_t>(CharCount(text)) || call.Whole(2) < 0) return;
  std::string result = Left(text, CountOf(start - 1)) + std::string(call.Text(3));
  call.Give(std::string_view(result + Mid(text, CountOf(start) + CountOf(call.Whole(2)))));
}

// STR(number, width, decimals): right-aligned, stars when it does not fit.
void Str(Call& call) {
  std::size_t width = call.count() > 1 ? std::min<std::size_t>(CountOf(call.Whole(1)), 8000) : 10;
  int decimals = call.count() > 2 ? static_cast<int>(std::clamp<std::int64_t>(call.Whole(2), 0, 15)) : 0;
  std::string picture = decimals > 0 ? "0." + std::string(static_cast<std::size_t>(decimals), '0') : "0";
  std::string text = FormatNumber(call.Number(0), picture);
  if (text.size() > width) text = std::string(width, '*');
  call.Give(std::string_view(std::string(width - text.size(), ' ') + text));
}

bool Converts(std::string_view text, const SqlType& type) {
  try {
    Convert(std::string(text), SqlType::Text(), type, Overlong::kCut);
    return true;
  } catch (const SqlError&) {
    return false;
  }
}

void IsNumericText(Call& call) {
  bool number = !call.IsNull(0) && !Trim(call.Text(0)).empty() && Converts(call.Text(0), SqlType::Float());
  call.Give(std::int64_t{number});
}

void IsDateText(Call& call) {
  bool date = !call.IsNull(0) && !Trim(call.Text(0)).empty() && Converts(call.Text(0), SqlType::DateTime());
  call.Give(std::int64_t{date});
}

void Now(Call& call) {
  call.Give(std::string_view(CanonicalDate(call.shared().clock->Now())));
}

DateTime Moved(std::string_view part, std::int64_t count, const DateTime& date) {
  if (count < -1'000'000'000 || count > 1'000'000'000)
    throw SqlError(native::kOverflow, std::to_string(count), "datetime");
  if (part == "year") return date.AddMonths(static_cast<int>(std::clamp<std::int64_t>(count, -10000, 10000)) * 12);
  if (part == "quarter") return date.AddMonths(static_cast<int>(std::clamp<std::int64_t>(count, -40000, 40000)) * 3);
  if (part == "month") return date.AddMonths(static_cast<int>(std::clamp<std::int64_t>(count, -120000, 120000)));
  if (part == "week") return date.AddDays(std::clamp<std::int64_t>(count, -600000, 600000) * 7);
  if (part == "hour") return date.AddSeconds(count * 3600);
  if (part == "minute") return date.AddSeconds(count * 60);
  if (part == "second") return date.AddSeconds(count);
  return date.AddDays(std::clamp<std::int64_t>(count, -4000000, 4000000));
}

void DateAdd(Call& call) {
  DateTime moved = Moved(call.Text(0), call.Whole(1), call.Date(2));
  bool in_range = moved.Year() >= 1753 && moved.Year() <= 9999;
  if (!in_range) throw SqlError(native::kOverflow, std::to_string(call.Whole(1)), "datetime");
  call.Give(std::string_view(CanonicalDate(moved)));
}

// Boundaries crossed, as the server counts them: from 31 December to 1 January is one year.
std::int64_t Boundaries(std::string_view part, const DateTime& from, const DateTime& to) {
  std::int64_t months = (to.Year() - from.Year()) * 12 + to.Month() - from.Month();
  std::int64_t days = to.DaysSince(from);
  if (part == "year") return to.Year() - from.Year();
  if (part == "quarter") return (to.Year() - from.Year()) * 4 + (to.Month() - 1) / 3 - (from.Month() - 1) / 3;
  if (part == "month") return months;
  if (part == "week") return (days + from.Weekday() - 1 - (to.Weekday() - 1)) / 7;
  if (part == "hour") return days * 24 + to.Hour() - from.Hour();
  std::int64_t minutes = days * 1440 + (to.Hour() - from.Hour()) * 60 + to.Minute() - from.Minute();
  if (part == "minute") return minutes;
  if (part == "second") return minutes * 60 + to.Second() - from.Second();
  return days;
}

void DateDiff(Call& call) {
  call.Give(Boundaries(call.Text(0), call.Date(1), call.Date(2)));
}

void DatePartOf(Call& call) {
  std::string_view part = call.Text(0);
  DateTime date = call.Date(1);
  DateTime new_year(date.Year(), 1, 1);
  std::int64_t value = part == "year"      ? date.Year()
                       : part == "quarter" ? (date.Month() - 1) / 3 + 1
                       : part == "month"   ? date.Month()
                       : part == "week"    ? (date.DaysSince(new_year) + new_year.Weekday() - 1) / 7 + 1
                       : part == "weekday" ? date.Weekday()
                       : part == "hour"    ? date.Hour()
                       : part == "minute"  ? date.Minute()
                       : part == "second"  ? date.Second()
                                           : date.Day();
  call.Give(value);
}

void NewId(Call& call) {
  static std::mt19937_64 random{std::random_device{}()};
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string id;
  for (int i = 0; i < 36; ++i) id += i == 8 || i == 13 || i == 18 || i == 23 ? '-' : kDigits[random() % 16];
  call.Give(std::string_view(id));
}

void DbName(Call& call) {
  call.Give(std::string_view(call.shared().database));
}
void ErrorMessage(Call& call) {
  if (call.shared().caught_number != 0) call.Give(std::string_view(call.shared().caught_message));
}
void ErrorNumber(Call& call) {
  if (call.shared().caught_number != 0) call.Give(std::int64_t{call.shared().caught_number});
}

// Names come with or without a schema and brackets: "dbo.T", "[T]".
void ObjectId(Call& call) {
  std::string name(call.Text(0));
  std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
  std::size_t dot = name.rfind('.');
  if (dot != std::string::npos) name.erase(0, dot + 1);
  std::int64_t id = call.shared().catalogue->FindObject(Trim(name));
  if (id != 0) call.Give(id);
}

// t_only: the value of a subquery that may have one row at most.
void OnlyStep(sqlite3_context* context, int, sqlite3_value** values) {
  auto** kept = static_cast<sqlite3_value**>(sqlite3_aggregate_context(context, sizeof(sqlite3_value*)));
  if (!kept) return sqlite3_result_error_nomem(context);
  if (!*kept) {
    *kept = sqlite3_value_dup(values[0]);
    return;
  }
  SqlError error(native::kSubqueryRows);
  static_cast<FunctionContext*>(sqlite3_user_data(context))->error = std::make_unique<SqlError>(error);
  sqlite3_result_error(context, error.what(), -1);
}

void OnlyFinal(sqlite3_context* context) {
  auto** kept = static_cast<sqlite3_value**>(sqlite3_aggregate_context(context, 0));
  if (!kept || !*kept) return;
  sqlite3_result_value(context, *kept);
  sqlite3_value_free(*kept);
}

template <Body body, bool null_in_null_out = true>
void Register(sqlite3* store, FunctionContext& context, const char* name, int flags = SQLITE_DETERMINISTIC) {
  sqlite3_create_function_v2(store, name, -1, SQLITE_UTF8 | flags, &context, Invoke<body, null_in_null_out>, nullptr,
                             nullptr, nullptr);
}

}  // namespace

void RegisterFunctions(sqlite3* store, FunctionContext& context) {
  constexpr int kVolatile = 0;
  Register<TCast>(store, context, "t_cast");
  Register<TStore>(store, context, "t_store");
  Register<Divisor>(store, context, "t_divisor");
  Register<Mod>(store, context, "t_mod");
  Register<Round>(store, context, "t_round");
  Register<Rounded>(store, context, "t_rounded");
  Register<Whole<Ceil>>(store, context, "t_ceiling");
  Register<Whole<Floor>>(store, context, "t_floor");
  Register<Like>(store, context, "t_like");
  Register<LikeLow>(store, context, "t_like_low");
  Register<LikeHigh>(store, context, "t_like_high");
  Register<Length>(store, context, "t_len");
  Register<DataLength>(store, context, "t_datalength");
  Register<RightText>(store, context, "t_right");
  Register<Substring>(store, context, "t_substring");
  Register<ReplaceText>(store, context, "t_replace");
  Register<CharIndex>(store, context, "t_charindex");
  Register<Replicate>(store, context, "t_replicate");
  Register<Reverse>(store, context, "t_reverse");
  Register<Stuff>(store, context, "t_stuff");
  Register<Str>(store, context, "t_str");
  Register<IsNumericText, false>(store, context, "t_isnumeric");
  Register<IsDateText, false>(store, context, "t_isdate");
  Register<DateAdd>(store, context, "t_dateadd");
  Register<DateDiff>(store, context, "t_datediff");
  Register<DatePartOf>(store, context, "t_datepart");
  Register<Now>(store, context, "t_now", kVolatile);
  Register<NewId>(store, context, "t_newid", kVolatile);
  Register<DbName>(store, context, "t_dbname", kVolatile);
  Register<ErrorMessage>(store, context, "t_error_message", kVolatile);
  Register<ErrorNumber>(store, context, "t_error_number", kVolatile);
  sqlite3_create_function_v2(store, "t_only", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, &context, nullptr, OnlyStep,
                             OnlyFinal, nullptr);
  Register<ObjectId>(store, context, "t_object_id", kVolatile);
}

}  // namespace luming::localdb
