#include "basic/dates.h"

#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace amp {

namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's method),
// and back. Both are exact for every year the parser accepts.
int64_t DaysFromCivil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2 ? 1 : 0;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

// Day 0 of the serial count, 1899-12-30, in days since 1970-01-01.
constexpr int64_t kSerialEpoch = -25569;

bool IsLeap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int DaysInMonth(int y, int m) {
  static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeap(y) ? 29 : kDays[static_cast<size_t>(m - 1)];
}

struct Token {
  enum Kind { kNumber, kWord, kColon } kind;
  std::string text;
  int value = 0;  // numbers only
};

bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }
bool IsLetter(char ch) { return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z'); }

std::string Lower(std::string s) {
  for (char& ch : s)
    if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch - 'A' + 'a');
  return s;
}

// Splits into numbers, words and colons; blanks, tabs, "-", "/" and "," only
// separate. Any other byte makes the text no date (false). Numbers longer
// than four digits are never part of a date or time, so they fail here too.
bool Tokenize(std::string_view text, std::vector<Token>* out) {
  size_t i = 0;
  while (i < text.size()) {
    const char ch = text[i];
    if (ch == ' ' || ch == '\t' || ch == '-' || ch == '/' || ch == ',') {
      ++i;
    } else if (ch == ':') {
      out->push_back({Token::kColon, ":", 0});
      ++i;
    } else if (IsDigit(ch)) {
      size_t j = i;
      int value = 0;
      while (j < text.size() && IsDigit(text[j])) {
        if (j - i == 4) return false;
        value = value * 10 + (text[j] - '0');
        ++j;
      }
      out->push_back({Token::kNumber, std::string(text.substr(i, j - i)), value});
      i = j;
    } else if (IsLetter(ch)) {
      size_t j = i;
      while (j < text.size() && IsLetter(text[j])) ++j;
      out->push_back({Token::kWord, Lower(std::string(text.substr(i, j - i))), 0});
      i = j;
    } else {
      return false;
    }
  }
  return true;
}

// 1..12 for an English month name, full or its first three letters; else 0.
int MonthOfName(const std::string& word) {
  static constexpr std::array<std::string_view, 12> kNames = {
      "january", "february", "march",     "april",   "may",      "june",
      "july",    "august",   "september", "october", "november", "december"};
  for (size_t m = 0; m < kNames.size(); ++m) {
    if (word == kNames[m] || (word.size() == 3 && kNames[m].substr(0, 3) == word))
      return static_cast<int>(m) + 1;
  }
  return 0;
}

// A year as written: three or four digits stand as they are (100 and up);
// one or two digits fall in a 100-year window, 1930 to 2029.
bool YearOf(const Token& t, int* year) {
  if (t.text.size() >= 3) {
    if (t.value < 100) return false;
    *year = t.value;
  } else {
    *year = t.value < 30 ? 2000 + t.value : 1900 + t.value;
  }
  return true;
}

bool Short(const Token* t) { return t->text.size() <= 2; }

// Three date parts in the order written: numbers, and at most one month name.
bool DateOf(const std::vector<const Token*>& parts, DateTime* dt) {
  if (parts.size() != 3) return false;
  int year = 0, month = 0, day = 0;
  std::vector<const Token*> numbers;
  const Token* word = nullptr;
  for (const Token* t : parts) {
    if (t->kind == Token::kWord) {
      if (word != nullptr) return false;
      word = t;
    } else {
      numbers.push_back(t);
    }
  }
  if (word != nullptr) {
    month = MonthOfName(word->text);
    if (month == 0) return false;
    // "Nov 01 2008", "01-Nov-2008", "2008-Nov-01": the long number is the
    // year; with two short numbers the day comes first.
    const Token* a = numbers[0];
    const Token* b = numbers[1];
    if (!Short(a) && !Short(b)) return false;
    if (!Short(a)) std::swap(a, b);
    if (!Short(a)) return false;
    day = a->value;
    if (!YearOf(*b, &year)) return false;
  } else if (!Short(numbers[0])) {  // 2008-11-01
    if (!Short(numbers[1]) || !Short(numbers[2])) return false;
    if (!YearOf(*numbers[0], &year)) return false;
    month = numbers[1]->value;
    day = numbers[2]->value;
  } else {  // 11/01/2008
    if (!Short(numbers[1])) return false;
    month = numbers[0]->value;
    day = numbers[1]->value;
    if (!YearOf(*numbers[2], &year)) return false;
  }
  if (year < 100 || year > 9999 || month < 1 || month > 12) return false;
  if (day < 1 || day > DaysInMonth(year, month)) return false;
  dt->year = year;
  dt->month = month;
  dt->day = day;
  return true;
}

}  // namespace

int32_t DaySerial(int year, int month, int day) {
  return static_cast<int32_t>(DaysFromCivil(year, month, day) - kSerialEpoch);
}

DateTime DateFromSerial(int32_t serial) {
  int64_t z = static_cast<int64_t>(serial) + kSerialEpoch + 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  DateTime dt;
  dt.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  dt.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  dt.year = static_cast<int>(yoe + era * 400 + (dt.month <= 2 ? 1 : 0));
  dt.hour = dt.minute = dt.second = 0;
  return dt;
}

std::optional<DateTime> ParseDate(std::string_view text) {
  std::vector<Token> tokens;
  if (!Tokenize(text, &tokens) || tokens.empty()) return std::nullopt;

  std::vector<const Token*> dateParts;
  bool haveTime = false;
  int hour = 0, minute = 0, second = 0;
  for (size_t i = 0; i < tokens.size();) {
    const Token& t = tokens[i];
    const bool timeStarts =
        t.kind == Token::kNumber && i + 1 < tokens.size() && tokens[i + 1].kind == Token::kColon;
    if (timeStarts) {
      // h:mm or h:mm:ss, then an optional AM or PM.
      if (haveTime) return std::nullopt;
      haveTime = true;
      int fields[3] = {0, 0, 0};
      int count = 0;
      size_t j = i;
      for (;;) {
        if (j >= tokens.size() || tokens[j].kind != Token::kNumber || tokens[j].text.size() > 2)
          return std::nullopt;
        fields[count++] = tokens[j].value;
        ++j;
        if (count == 3 || j >= tokens.size() || tokens[j].kind != Token::kColon) break;
        ++j;  // the colon
      }
      if (count < 2) return std::nullopt;
      hour = fields[0];
      minute = fields[1];
      second = fields[2];
      if (j < tokens.size() && tokens[j].kind == Token::kWord &&
          (tokens[j].text == "am" || tokens[j].text == "pm")) {
        if (hour > 12) return std::nullopt;
        if (tokens[j].text == "am" && hour == 12) hour = 0;
        if (tokens[j].text == "pm" && hour < 12) hour += 12;
        ++j;
      }
      if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
      i = j;
    } else if (t.kind == Token::kColon) {
      return std::nullopt;
    } else if (t.kind == Token::kWord && t.text == "t" && i + 2 < tokens.size() &&
               tokens[i + 2].kind == Token::kColon) {
      ++i;  // the "T" of 2008-11-01T13:45:10
    } else {
      dateParts.push_back(&t);
      ++i;
    }
  }

  DateTime dt;
  if (!dateParts.empty() || !haveTime) {
    if (!DateOf(dateParts, &dt)) return std::nullopt;
  }
  dt.hour = hour;
  dt.minute = minute;
  dt.second = second;
  return dt;
}

bool IsDate(std::string_view text) { return ParseDate(text).has_value(); }

std::optional<int32_t> DateDaySerial(std::string_view text) {
  const auto dt = ParseDate(text);
  if (!dt) return std::nullopt;
  return DaySerial(dt->year, dt->month, dt->day);
}

}  // namespace amp
