#include "tessara/backend/TSRNetworkError.h"

namespace tessara {

QString TSRNetworkError::errorDescription() const {
    switch (kind_) {
    case Kind::custom:
        return text_;
    case Kind::notFound:
        return QStringLiteral("URL not found: ") + text_;
    case Kind::httpCode:
        return QStringLiteral("HTTP ") + QString::number(status_);
    case Kind::invalidURL:
        return QStringLiteral("The URL is invalid.");
    case Kind::requestFailed:
        return QStringLiteral("The request failed.");
    case Kind::decodingFailure:
        return QStringLiteral("JSON decoding failed.");
    case Kind::encodingFailure:
        return QStringLiteral("JSON encoding failed.");
    case Kind::timeout:
        return QStringLiteral("The request timed out.");
    case Kind::connectionLost:
        return QStringLiteral("The network connection was lost.");
    }
    return {};
}

} // namespace tessara
