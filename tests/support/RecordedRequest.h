#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <optional>

namespace tessara::test {

// One part of a multipart/form-data body.
struct MultipartPart {
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray data;

    QByteArray header(const QByteArray& name) const;
};

// One HTTP request as a server received it.
struct RecordedRequest {
    QByteArray raw;                               // request line, headers and body, exactly as received
    QByteArray method;                            // "GET"
    QByteArray target;                            // "/api/step/1?x=2", as sent
    QList<QPair<QByteArray, QByteArray>> headers; // in order, names as sent
    QByteArray body;

    // First value of a header (name compared case-insensitively); empty when absent.
    QByteArray header(const QByteArray& name) const;
    bool hasHeader(const QByteArray& name) const;
    // Header names in the order they arrived.
    QList<QByteArray> headerNames() const;
    // The target's path, still percent-encoded.
    QByteArray path() const;
    // The query items in order, percent-decoded.
    QList<QPair<QString, QString>> queryItems() const;
    // The parts of a multipart body, split at the boundary named in Content-Type; absent
    // when the body does not follow the multipart layout exactly.
    std::optional<QList<MultipartPart>> multipartParts() const;

    // Parses one request from the start of `buffer`. Absent while the request is not
    // complete; `consumed` receives its length in bytes.
    static std::optional<RecordedRequest> parse(const QByteArray& buffer, qsizetype* consumed);
};

} // namespace tessara::test
