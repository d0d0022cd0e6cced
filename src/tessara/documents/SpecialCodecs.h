#pragma once

// Codecs for wire forms that a table names explicitly; kept apart so that only the records using
// them pay for the date and URL headers. Internal to the documents code.

#include "tessara/documents/RecordCodecs.h"

#include <QDate>
#include <QUrl>
#include <optional>
#include <vector>

namespace tessara {

// A URL must be valid and absolute: the screens that use one could do nothing sensible with a
// relative or broken one, so it fails the whole document.
struct AbsoluteUrlCodec {
    static QUrl read(JsonValue value);
    static void write(JsonWriter& writer, const QUrl& value);
};
inline constexpr AbsoluteUrlCodec absoluteUrl{};

// A "yyyy-MM-dd" day whose unreadable text means no day. Only for optional members: read gives
// std::nullopt for text that is no day, and still fails for a value that is no text.
struct DayOrAbsentCodec {
    static std::optional<QDate> read(JsonValue value);
    static void write(JsonWriter& writer, const QDate& value);
};
inline constexpr DayOrAbsentCodec dayOrAbsent{};

// The days on offer: "yyyy-MM-dd" texts, held in ascending order whatever the backend's order.
// A text that is no day is fatal: the backend promised days, and a guessed list would offer wrong
// dates to pick.
struct AvailableDaysCodec {
    static constexpr bool fatalOnBadInput = true;
    static std::vector<QDate> read(JsonValue value);
    static void write(JsonWriter& writer, const std::vector<QDate>& values);
};
inline constexpr AvailableDaysCodec availableDays{};

} // namespace tessara
