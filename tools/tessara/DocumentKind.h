#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>

namespace tessara::tool {

// The documents the tool can read, by the names its commands use: "step",
// "section-list", "products", "dates", "details", "kyc-status".
class DocumentKind {
public:
    static QStringList names();
    static bool exists(const QString& kind);

    // Decodes `bytes` by the client's rules and writes the record back with sorted keys
    // and absent values left out. Absent when the bytes do not decode as `kind`.
    static std::optional<QByteArray> reencode(const QString& kind, QByteArrayView bytes);

    // Whether the client would stop the program on these bytes instead of failing the
    // decoding (an unreadable date in "availableDates"). The tool checks this first, so
    // malformed input never ends it abruptly.
    static bool stopsTheClient(const QString& kind, QByteArrayView bytes);
};

} // namespace tessara::tool
