#include "tessara/documents/Parser.h"

#include <QTime>

namespace tessara {

namespace {

// Reads exactly `count` ASCII digits at `pos`; the formats are fixed-width, so any other width is
// rejected rather than guessed at. Digits from other scripts never count.
std::optional<int> digitsAt(QStringView text, qsizetype pos, int count) {
    if (pos + count > text.size())
        return std::nullopt;
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const char16_t c = text[pos + i].unicode();
        if (c < u'0' || c > u'9')
            return std::nullopt;
        value = value * 10 + (c - u'0');
    }
    return value;
}

bool charAt(QStringView text, qsizetype pos, char16_t expected) {
    return pos < text.size() && text[pos].unicode() == expected;
}

std::optional<QDate> dayAt(QStringView text) {
    const auto year = digitsAt(text, 0, 4);
    const auto month = digitsAt(text, 5, 2);
    const auto day = digitsAt(text, 8, 2);
    if (!year || !month || !day || !charAt(text, 4, u'-') || !charAt(text, 7, u'-'))
        return std::nullopt;
    const QDate date(*year, *month, *day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

} // namespace

std::optional<QDate> Parser::parseDay(QStringView text) {
    if (text.size() != 10)
        return std::nullopt;
    return dayAt(text);
}

QString Parser::formatDay(QDate day) {
    if (!day.isValid())
        return QString();
    return QString::asprintf("%04d-%02d-%02d", day.year(), day.month(), day.day());
}

std::optional<QDateTime> Parser::parseBackendTime(QStringView text) {
    // yyyy-MM-ddTHH:mm:ss.SSS then "Z" or ±HH:MM
    const auto date = dayAt(text.left(10));
    if (!date || !charAt(text, 10, u'T') || !charAt(text, 13, u':') || !charAt(text, 16, u':') ||
        !charAt(text, 19, u'.'))
        return std::nullopt;
    const auto hour = digitsAt(text, 11, 2);
    const auto minute = digitsAt(text, 14, 2);
    const auto second = digitsAt(text, 17, 2);
    const auto millisecond = digitsAt(text, 20, 3);
    if (!hour || !minute || !second || !millisecond)
        return std::nullopt;
    const QTime time(*hour, *minute, *second, *millisecond);
    if (!time.isValid())
        return std::nullopt;

    int offsetSeconds = 0;
    const QStringView zone = text.mid(23);
    if (zone == u"Z") {
        offsetSeconds = 0;
    } else {
        if (zone.size() != 6 || !(charAt(zone, 0, u'+') || charAt(zone, 0, u'-')) || !charAt(zone, 3, u':'))
            return std::nullopt;
        const auto zoneHours = digitsAt(zone, 1, 2);
        const auto zoneMinutes = digitsAt(zone, 4, 2);
        if (!zoneHours || !zoneMinutes || *zoneHours > 18 || *zoneMinutes > 59)
            return std::nullopt;
        offsetSeconds = (*zoneHours * 3600 + *zoneMinutes * 60) * (charAt(zone, 0, u'-') ? -1 : 1);
    }
    // The wall-clock time read in UTC, moved back by the offset, is the instant.
    return QDateTime(*date, time, Qt::UTC).addSecs(-offsetSeconds);
}

QString Parser::formatBackendTime(const QDateTime& time) {
    const QDateTime utc = time.toUTC();
    const QDate date = utc.date();
    const QTime clock = utc.time();
    return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", date.year(), date.month(), date.day(),
                             clock.hour(), clock.minute(), clock.second(), clock.msec());
}

} // namespace tessara
