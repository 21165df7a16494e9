// Each date is stored with the rule of its own year, both ways, compared with the system's own
// conversion and with the zones' history; dates a file cannot keep are refused, the file's time
// kept.

#include "attributes/date_answers.h"
#include "attributes/zone_dates.h"

namespace items_test {
namespace {

std::u16string HostTimestamp(const char* local) {
    const Minute time = Parse(local);
    char text[96];
    snprintf(text, sizeof text, "Timestamp ( Date ( %d ; %d ; %d ) ; Time ( %d ; %d ; 0 ) )",
             time.month, time.day, time.year, time.hour, time.minute);
    return slib::String::FromUtf8(text)->units();
}

std::string HostShown(const char* local) {
    const Minute time = Parse(local);
    char text[40];
    snprintf(text, sizeof text, "%d/%d/%d %d:%02d:00", time.month, time.day, time.year, time.hour,
             time.minute);
    return text;
}

TEST_F(ZoneDates, EachDateIsStoredWithTheRuleOfItsOwnYear) {
    if (const std::optional<std::string> missing = MissingZone(*zone_)) {
        GTEST_SKIP() << *missing;
    }
    writeFile(u"a.txt", "x");
    for (const DateCase& c : zone_->cases) {
        SCOPED_TRACE(c.local);
        ASSERT_EQ(
            evaluate(u"VFile_Set( \"modified\" ; \"a.txt\" ; " + HostTimestamp(c.local) + u" )"),
            "");
        const std::string stored = UtcModified(path(u"a.txt"));
        EXPECT_EQ(stored, SystemUtc(c)) << "the system's own rule for the year";
        if (c.disagrees == nullptr || kSystemKeepsZoneHistory) {
            EXPECT_EQ(stored, c.zoneinfo) << "the IANA history";
        } else {
            EXPECT_NE(stored, c.zoneinfo) << "listed as differing: " << c.disagrees;
        }
        EXPECT_EQ(evaluate(u"VFile_Get( \"modified\" ; \"a.txt\" )"), HostShown(c.local));
    }
}

TEST_F(ZoneDates, DatesAFileCannotKeepAreRefused) {
    writeFile(u"a.txt", "x");
    const std::vector<std::u16string> unkeepable = DatesTheFileCannotKeep(path(u"probe.txt"));
    ASSERT_EQ(evaluate(uR"(VFile_Set( "modified" ; "a.txt" ; Timestamp ( Date ( 7 ; 1 ; 2021 ) ;
                           Time ( 12 ; 0 ; 0 ) ) ))"),
              "");
    const std::string before = UtcModified(path(u"a.txt"));
    const std::string refused = Failed(-50, "The file cannot keep this date");
    for (const std::u16string& value : unkeepable) {
        EXPECT_EQ(call(u"VFile_Set( \"modified\" ; \"a.txt\" ; " + value + u" )"), refused)
            << Narrow(value);
        EXPECT_EQ(UtcModified(path(u"a.txt")), before);
        // A missing file is made only for a date it can keep.
        EXPECT_EQ(call(u"VFile_Set( \"modified\" ; \"new.txt\" ; " + value + u" )"), refused)
            << Narrow(value);
        EXPECT_FALSE(exists(u"new.txt"));
    }
}

}  // namespace
}  // namespace items_test
