#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QUrlQuery>
#include <optional>

namespace tessara {

// One HTTP request as the endpoints see it, detached from sockets so the endpoint logic can be
// driven by plain values.
struct BackendRequest {
    QByteArray method;        // "GET", "POST", ...
    QString target;           // path and query as received, for the request log
    QStringList pathSegments; // percent-decoded, without empty segments
    QUrlQuery query;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    // Host and port the client used to reach the server, e.g. "127.0.0.1:8080".
    QString authority;

    // First header of that name, compared case-insensitively.
    std::optional<QByteArray> header(QByteArrayView name) const {
        for (const auto& [field, value] : headers) {
            if (QByteArrayView(field).compare(name, Qt::CaseInsensitive) == 0)
                return value;
        }
        return std::nullopt;
    }
};

} // namespace tessara
