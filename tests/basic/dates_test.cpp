// Date texts as firmware writes them, and serial day numbers.
#include <gtest/gtest.h>

#include "basic/dates.h"

namespace amp {
namespace {

TEST(Dates, SerialDayNumbersFromTheDayZeroOf1899) {
  // Fixed points of the serial count: day 0 is 1899-12-30, so 1900-01-01 is
  // day 2; the firmware date rules name 2007-12-05 and 2008-11-01 by their
  // numbers 39421 and 39753.
  EXPECT_EQ(DaySerial(1899, 12, 30), 0);
  EXPECT_EQ(DaySerial(1899, 12, 29), -1);
  EXPECT_EQ(DaySerial(1900, 1, 1), 2);
  EXPECT_EQ(DaySerial(1900, 3, 1), 61);  // 1900 is no leap year
  EXPECT_EQ(DaySerial(2007, 12, 5), 39421);
  EXPECT_EQ(DaySerial(2008, 11, 1), 39753);
  // 2008 and 2000 are leap years: 366 days each.
  EXPECT_EQ(DaySerial(2009, 1, 1) - DaySerial(2008, 1, 1), 366);
  EXPECT_EQ(DaySerial(2001, 1, 1) - DaySerial(2000, 1, 1), 366);
  EXPECT_EQ(DaySerial(2101, 1, 1) - DaySerial(2100, 1, 1), 365);
}

TEST(Dates, SerialDayNumbersBackToDates) {
  const DateTime d = DateFromSerial(39753);
  EXPECT_EQ(d.year, 2008);
  EXPECT_EQ(d.month, 11);
  EXPECT_EQ(d.day, 1);
  const DateTime zero = DateFromSerial(0);
  EXPECT_EQ(zero.year, 1899);
  EXPECT_EQ(zero.month, 12);
  EXPECT_EQ(zero.day, 30);
  const DateTime leap = DateFromSerial(DaySerial(2008, 2, 29));
  EXPECT_EQ(leap.month, 2);
  EXPECT_EQ(leap.day, 29);
  // Both ways agree over the whole supported range, across every month end.
  for (int32_t s = DaySerial(100, 1, 1); s <= DaySerial(9999, 12, 31); s += 97) {
    const DateTime x = DateFromSerial(s);
    ASSERT_EQ(DaySerial(x.year, x.month, x.day), s) << s;
  }
}

TEST(Dates, FirmwareCompileDateForms) {
  for (const char* text :
       {"Nov 01 2008", "Nov  1 2008", "nov 1 2008", "NOV 01 2008", "November 1, 2008",
        "01-Nov-2008", "1 Nov 2008", "2008-11-01", "2008/11/01", "11/01/2008", "11-01-2008",
        "11/1/08", "01-Nov-08", "  Nov 01 2008  "}) {
    const auto day = DateDaySerial(text);
    ASSERT_TRUE(day.has_value()) << text;
    EXPECT_EQ(*day, 39753) << text;
  }
  EXPECT_EQ(DateDaySerial("Oct 31 2008"), 39752);
  EXPECT_EQ(DateDaySerial("Nov 02 2008"), 39754);
  EXPECT_EQ(DateDaySerial("Feb 29 2008"), DaySerial(2008, 2, 29));
  // Two-digit years: 0-29 in this century, 30-99 in the last.
  EXPECT_EQ(DateDaySerial("1/1/29"), DaySerial(2029, 1, 1));
  EXPECT_EQ(DateDaySerial("1/1/30"), DaySerial(1930, 1, 1));
}

TEST(Dates, DatesWithATimeOfDay) {
  auto dt = ParseDate("Nov 01 2008 13:45:10");
  ASSERT_TRUE(dt.has_value());
  EXPECT_EQ(dt->year, 2008);
  EXPECT_EQ(dt->hour, 13);
  EXPECT_EQ(dt->minute, 45);
  EXPECT_EQ(dt->second, 10);
  // The time never moves the day: "on 2008-11-01" stays day 39753.
  EXPECT_EQ(DateDaySerial("Nov 01 2008 23:59:59"), 39753);
  EXPECT_EQ(DateDaySerial("2008-11-01T13:45"), 39753);
  EXPECT_EQ(DateDaySerial("13:45 11/01/2008"), 39753);

  dt = ParseDate("11/01/2008 1:05 PM");
  ASSERT_TRUE(dt.has_value());
  EXPECT_EQ(dt->hour, 13);
  EXPECT_EQ(dt->minute, 5);
  dt = ParseDate("01-Nov-2008 12:00:00am");
  ASSERT_TRUE(dt.has_value());
  EXPECT_EQ(dt->hour, 0);

  // A time alone is a time on day 0.
  EXPECT_EQ(DateDaySerial("10:30"), 0);
}

TEST(Dates, TextsThatAreNoDate) {
  for (const char* text : {"",
                           "   ",
                           "NOT SET",
                           "2008",
                           "Nov 2008",
                           "Nov 01",
                           "11/01",
                           "13/01/2008",
                           "00/10/2008",
                           "Feb 29 2007",
                           "Feb 30 2008",
                           "Apr 31 2008",
                           "Nox 01 2008",
                           "Nov 01 2008 2009",
                           "Nov Dec 01",
                           "12345-11-01",
                           "2008-11-01 25:00",
                           "2008-11-01 10:60",
                           "2008-11-01 13:00 PM",
                           "2008-11-01 10:",
                           "2008-11-01 :10",
                           "2008.11.01",
                           "1.5",
                           "V2.05",
                           "Nov 01 0050",
                           "Nov 01 2008\x03",
                           "2008-2008-11",
                           "11/01/2008 10:00 10:00"}) {
    EXPECT_FALSE(IsDate(text)) << text;
    EXPECT_FALSE(DateDaySerial(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace amp
