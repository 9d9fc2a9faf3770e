// Dates as the unit reports them (firmware compile dates, the unit clock) and
// serial day numbers: whole days counted from 1899-12-30, which is day 0, so
// 1900-01-01 is day 2 and 2008-11-01 is day 39753. The calendar is the
// proleptic Gregorian one for years 100 to 9999. No locale and no clock: the
// same text gives the same answer on every host.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace amp {

struct DateTime {
  int year = 1899;
  int month = 12;  // 1..12
  int day = 30;    // 1..31
  int hour = 0;    // 0..23
  int minute = 0;
  int second = 0;
};

// Day number of a calendar date (no check that the date exists).
int32_t DaySerial(int year, int month, int day);
// Calendar date of a day number; the time fields are 0.
DateTime DateFromSerial(int32_t serial);

// A date text with an optional time, in the forms firmware writes dates:
//   "Nov 01 2008", "Nov  1 2008", "November 1, 2008", "01-Nov-2008",
//   "1 Nov 2008", "2008-11-01", "2008/11/01", "11/01/2008", "11-01-08"
// followed (or preceded) by "13:45", "13:45:10", "1:45 PM" or "1:45:10pm".
// All-digit dates are year-month-day when the first number has three or four
// digits, else month/day/year (the order of the firmware's own host tools).
// Month names are English, full or three letters, any case. A one- or
// two-digit year is 2000-2029 for 0-29 and 1930-1999 for 30-99. A time alone
// ("13:45") is a time on day 0, as a general date parser takes it.
// Anything else, or a date that does not exist (Feb 30), is not a date.
std::optional<DateTime> ParseDate(std::string_view text);

bool IsDate(std::string_view text);

// The day number of a date text, time of day ignored; nullopt when the text
// is not a date. "Later than day N" tests compare this with N.
std::optional<int32_t> DateDaySerial(std::string_view text);

}  // namespace amp
