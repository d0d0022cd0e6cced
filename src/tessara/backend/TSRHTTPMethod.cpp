#include "tessara/backend/TSRHTTPMethod.h"

namespace tessara {

QByteArray verbString(TSRHTTPMethod method) {
    switch (method) {
    case TSRHTTPMethod::get:
        return QByteArrayLiteral("GET");
    case TSRHTTPMethod::put:
        return QByteArrayLiteral("PUT");
    case TSRHTTPMethod::post:
        return QByteArrayLiteral("POST");
    case TSRHTTPMethod::delete_:
        return QByteArrayLiteral("DELETE");
    case TSRHTTPMethod::head:
        return QByteArrayLiteral("HEAD");
    case TSRHTTPMethod::options:
        return QByteArrayLiteral("OPTIONS");
    case TSRHTTPMethod::trace:
        return QByteArrayLiteral("TRACE");
    case TSRHTTPMethod::connect:
        return QByteArrayLiteral("CONNECT");
    }
    return {};
}

} // namespace tessara
