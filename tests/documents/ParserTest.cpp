#include "tessara/documents/Parser.h"

#include <QLocale>
#include <QTimeZone>
#include <gtest/gtest.h>

using tessara::Parser;

TEST(Parser, BackendTimeReadsMillisecondsAndZoneOffsets) {
    const QDateTime expected(QDate(2026, 11, 21), QTime(8, 15, 30, 123), Qt::UTC);
    const struct {
        const char16_t* text;
        QDateTime instant;
    } cases[] = {
        {u"2026-11-21T10:15:30.123+02:00", expected},
        {u"2026-11-21T08:15:30.123Z", expected},
        {u"2026-11-21T08:15:30.123+00:00", expected},
        {u"2026-11-21T02:45:30.123-05:30", expected},
        {u"2026-01-01T01:00:00.000+03:00", QDateTime(QDate(2025, 12, 31), QTime(22, 0), Qt::UTC)},
    };
    // Neither the locale nor its calendar or digits may change how the backend's text reads.
    for (const char* locale : {"C", "bg_BG", "ar_SA", "th_TH"}) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        for (const auto& c : cases) {
            const auto parsed = Parser::parseBackendTime(QStringView(c.text));
            ASSERT_TRUE(parsed) << locale << " " << QString::fromUtf16(c.text).toStdString();
            EXPECT_EQ(*parsed, c.instant) << locale;
            EXPECT_EQ(parsed->timeSpec(), Qt::UTC);
        }
    }
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(Parser::formatBackendTime(expected), "2026-11-21T08:15:30.123Z");
    EXPECT_EQ(Parser::parseBackendTime(Parser::formatBackendTime(expected)), expected);
}

TEST(Parser, BackendTimeRejectsOtherShapes) {
    const char16_t* rejected[] = {
        u"",
        u"2026-11-21",
        u"2026-11-21T10:15:30+02:00",    // no milliseconds
        u"2026-11-21T10:15:30.12+02:00", // two-digit milliseconds
        u"2026-11-21T10:15:30.123",      // no zone
        u"2026-11-21T10:15:30.123+0200", // zone without colon
        u"2026-11-21T10:15:30.123+2:00",
        u"2026-11-21 10:15:30.123Z",
        u"2026-02-30T10:15:30.123Z", // impossible day
        u"2026-11-21T24:00:00.000Z",
        u"2026-11-21T10:60:00.000Z",
        u"2026-11-21T10:15:30.123Zjunk",
        u"2026-11-21T10:15:30.123+19:00",
        u"٢٠٢٦-11-21T10:15:30.123Z", // digits of another script
    };
    for (const char16_t* text : rejected)
        EXPECT_FALSE(Parser::parseBackendTime(QStringView(text))) << QString::fromUtf16(text).toStdString();
}

TEST(Parser, DayFormat) {
    EXPECT_EQ(Parser::parseDay(u"2026-02-01"), QDate(2026, 2, 1));
    EXPECT_EQ(Parser::parseDay(u"2024-02-29"), QDate(2024, 2, 29));
    for (const char16_t* text : {u"2025-02-29", u"2026-2-1", u"20260201", u"2026-02-01 ", u"2026/02/01", u"",
                                 u"2026-00-10", u"+026-02-01"})
        EXPECT_FALSE(Parser::parseDay(QStringView(text))) << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(Parser::formatDay(QDate(987, 3, 4)), "0987-03-04");
    EXPECT_EQ(Parser::formatDay(QDate()), "");
}
