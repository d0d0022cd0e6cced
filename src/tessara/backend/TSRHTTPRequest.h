#pragma once

#include "tessara/backend/TSRHTTPHeader.h"
#include "tessara/backend/TSRHTTPMethod.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <optional>
#include <utility>

namespace tessara {

// A query item: name and value, kept in the order given.
using TSRQueryItem = std::pair<QString, QString>;

// Everything needed to make one transfer; a plain value that is built first and only
// turned into a network request when it is sent.
struct TSRHTTPRequest {
    TSRHTTPMethod method = TSRHTTPMethod::get;
    QUrl baseURL;
    QString path;
    std::optional<QList<TSRQueryItem>> queryItems;
    std::optional<QList<TSRHTTPHeader>> headers;
    std::optional<QByteArray> body;

    // Appends a header; a repeated field is kept, not replaced.
    void addHeader(const QString& field, const QString& value) {
        if (!headers)
            headers.emplace();
        headers->append({field, value});
    }

    friend bool operator==(const TSRHTTPRequest&, const TSRHTTPRequest&) = default;
};

} // namespace tessara
