#pragma once

#include <QByteArray>
#include <optional>

namespace tessara {

// Undoes a response's Content-Encoding. The transfer layer only decompresses what it
// asked for itself, and the client sets Accept-Encoding on its own, so bodies arrive as
// the server coded them.
class ContentDecoder {
public:
    // The most a response body may hold, counted at every layer of its codings (the
    // bytes as received included). No document of the backend comes near it; a larger
    // body is a decompression bomb or a broken server, and is refused rather than held.
    static constexpr qsizetype MAX_DECODED_BODY_BYTES = qsizetype(64) * 1024 * 1024;

    // `contentEncoding` is the header's value (may be empty). Codings listed in it are
    // undone last-applied first. Known: gzip (and x-gzip), deflate (zlib-wrapped or raw),
    // br, identity. Absent when a coding is unknown, the bytes are corrupt or any layer
    // would pass MAX_DECODED_BODY_BYTES; decoding stops as soon as it would.
    static std::optional<QByteArray> decode(const QByteArray& body, const QByteArray& contentEncoding);

    // One layer each, under the same limit.
    static std::optional<QByteArray> gunzip(const QByteArray& body);
    static std::optional<QByteArray> inflate(const QByteArray& body);
    static std::optional<QByteArray> unbrotli(const QByteArray& body);
};

} // namespace tessara
