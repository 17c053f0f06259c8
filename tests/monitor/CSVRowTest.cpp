#include "monitor/CSVRow.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <thread>

namespace calorivo {
namespace {

using namespace std::chrono;

/// Another time zone for as long as it lives. Written as an offset, so that no zone files are needed; the
/// sign says how far Greenwich is, not how far the zone is.
class TimeZone {
  public:
    explicit TimeZone(const char* zone) {
        if (const char* before = std::getenv("TZ")) before_ = before;
        set(zone);
    }
    ~TimeZone() {
        if (before_)
            set(before_->c_str());
        else
            unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    static void set(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    std::optional<std::string> before_;
};

constexpr WallTime moment = sys_days(2031y / February / 3) + 4h + 5min + 6s;

TEST(CSVRow, BeginsWithDateAndTimeEachWithItsComma) {
    const TimeZone utc("UTC0");
    EXPECT_EQ(createCSVRowPrefix(moment), "2031-02-03,04:05:06,");
}

TEST(CSVRow, TellsTheTimeOfTheLocalTimeZone) {
    const TimeZone east("EAST-05:30");
    EXPECT_EQ(createCSVRowPrefix(moment), "2031-02-03,09:35:06,");
}

TEST(CSVRow, TakesTheDateFromTheLocalTimeZoneToo) {
    const TimeZone west("WEST7");
    EXPECT_EQ(createCSVRowPrefix(moment), "2031-02-02,21:05:06,");
}

TEST(CSVRow, TakesDateAndTimeFromOneMoment) {
    const TimeZone utc("UTC0");
    const WallTime midnight = sys_days(2032y / January / 1);
    EXPECT_EQ(createCSVRowPrefix(midnight - 1ns), "2031-12-31,23:59:59,");
    EXPECT_EQ(createCSVRowPrefix(midnight), "2032-01-01,00:00:00,");
}

TEST(CSVRow, CountsDownwardBefore1970) {
    const TimeZone utc("UTC0");
    EXPECT_EQ(createCSVRowPrefix(WallTime(-500ms)), "1969-12-31,23:59:59,");
}

TEST(CSVRow, KnowsLeapDays) {
    const TimeZone utc("UTC0");
    EXPECT_EQ(createCSVRowPrefix(sys_days(2024y / February / 29) + 12h), "2024-02-29,12:00:00,");
}

TEST(CSVRow, DropsOneTrailingCommaOnly) {
    struct Case {
        const char* before;
        const char* after;
    };
    for (const Case& c : {Case{"a,b,", "a,b"}, Case{"a,,", "a,"}, Case{"a,b", "a,b"}, Case{",", ""},
                          Case{"", ""}, Case{"a, ", "a, "}}) {
        CSVRow row(c.before);
        row.removeCommaSuffix();
        EXPECT_EQ(row.text(), c.after);
    }
}

TEST(CSVRow, GrowsByFieldsAndByFilledPatterns) {
    CSVRow row("old");
    row.assign("2031-02-03,");
    row.append("N/A,");
    row.appendFormat("ALERT:%.0f,", 80.5);
    row.appendFormat("%d,", 1250);
    EXPECT_EQ(row.text(), "2031-02-03,N/A,ALERT:80,1250,");
}

TEST(CSVRow, MayBeReadWhileAnotherThreadAppends) {
    CSVRow row;
    std::jthread writer([&row] {
        for (int i = 0; i < 200; ++i) row.append("123456789,");
    });
    for (int i = 0; i < 200; ++i) EXPECT_EQ(row.text().size() % 10, 0U);
    writer.join();
    EXPECT_EQ(row.text().size(), 2000U);
}

}  // namespace
}  // namespace calorivo
