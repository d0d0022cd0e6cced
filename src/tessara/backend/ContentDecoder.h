#pragma once

#include <QByteArray>
#include <optional>

namespace tessara {

// Undoes a response's Content-Encoding. The transfer layer only decompresses what it
// asked for itself, and the client sets Accept-Encoding on its own, so bodies arrive as
// the server coded them.
class ContentDecoder {
public:
    // `contentEncoding` is the header's value (may be empty). Codings listed in it are
    // undone last-applied first. Known: gzip (and x-gzip), deflate (zlib-wrapped or raw),
    // br, identity. Absent when a coding is unknown or the bytes are corrupt.
    static std::optional<QByteArray> decode(const QByteArray& body, const QByteArray& contentEncoding);

    static std::optional<QByteArray> gunzip(const QByteArray& body);
    static std::optional<QByteArray> inflate(const QByteArray& body);
    static std::optional<QByteArray> unbrotli(const QByteArray& body);
};

} // namespace tessara
