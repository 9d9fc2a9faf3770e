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
  EXPECT_EQ(DaySerial(1900, 3, 1), 61);  // 1900 is no leap year
  EXPECT_EQ(DaySerial(2007, 12, 5), 39421);
  EXPECT_EQ(DaySerial(2008, 11, 1), 39753);
  // 2008 and 2000 are leap years: 366 days each.
  EXPECT_EQ(DaySerial(2009, 1, 1) - DaySerial(2008, 1, 1), 366);
  EXPECT_EQ(DaySerial(2001, 1, 1) - DaySerial(2000, 1, 1), 366);
  EXPECT_EQ(DaySerial(2101, 1, 1) - DaySerial(2100, 1, 1), 365);
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

TEST(Dates, ATimeOfDayNeverMovesTheDay) {
  for (const char* text : {"Nov 01 2008 23:59:59", "2008-11-01T13:45", "13:45 11/01/2008",
                           "11/01/2008 1:05 PM", "01-Nov-2008 12:00:00am"})
    EXPECT_EQ(DateDaySerial(text), 39753) << text;
  EXPECT_EQ(DateDaySerial("10:30"), 0);  // a time alone is a time on day 0
}

TEST(Dates, TextsThatAreNoDate) {
  const char* const texts[] = {"",
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
                               "11/01/2008 10:00 10:00"};
  for (const char* text : texts) {
    EXPECT_FALSE(IsDate(text)) << text;
    EXPECT_FALSE(DateDaySerial(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace amp
