#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringView>
#include <optional>

namespace tessara {

// The two date formats the backend uses. Both are independent of the device's locale and
// calendar; all calls are pure and safe from any thread.
class Parser {
public:
    Parser() = delete;

    // Backend time, "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ": e.g. "2026-11-21T10:15:30.123+02:00" or with
    // "Z" for UTC. Returns the instant as a UTC QDateTime; std::nullopt for any other text.
    static std::optional<QDateTime> parseBackendTime(QStringView text);
    // The same format, written in UTC with "Z".
    static QString formatBackendTime(const QDateTime& time);

    // Day, "yyyy-MM-dd"; std::nullopt for any other text or an impossible date.
    static std::optional<QDate> parseDay(QStringView text);
    // An invalid date gives an empty text.
    static QString formatDay(QDate day);
};

} // namespace tessara
