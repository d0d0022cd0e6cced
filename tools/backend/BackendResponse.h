#pragma once

#include "tessara/documents/JsonCoding.h"

#include <QByteArray>
#include <QString>
#include <nlohmann/json_fwd.hpp>

namespace tessara {

// One HTTP answer. Every answer of this server is JSON in UTF-8.
struct BackendResponse {
    int status = 200;
    QByteArray body;

    static BackendResponse json(QByteArray body, int status = 200) { return {status, std::move(body)}; }
    static BackendResponse fromJson(const nlohmann::json& value, int status = 200);
    // {"message": text}: the shape the client reads from a refused request.
    static BackendResponse error(int status, const QString& message);
    static BackendResponse badRequest(const QString& message) { return error(400, message); }
    // A record written by the SDK's own encoder: sorted keys, exact numbers.
    template <typename T> static BackendResponse document(const T& value, int status = 200) {
        if (auto bytes = encodeDocument<T>(value))
            return json(std::move(*bytes), status);
        return error(500, QStringLiteral("The answer could not be encoded."));
    }
};

// The one content type of every answer.
inline constexpr const char* kJsonContentType = "application/json; charset=utf-8";

} // namespace tessara
