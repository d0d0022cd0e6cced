#include "tessara/backend/TransportErrorMap.h"

namespace tessara {

TSRNetworkError TransportErrorMap::map(QNetworkReply::NetworkError code, bool endedByTimeout,
                                       const QString& errorString) {
    switch (code) {
    case QNetworkReply::UnknownNetworkError:
        return TSRNetworkError::requestFailed();
    case QNetworkReply::RemoteHostClosedError:
    // The link died and the body, which is never sent twice, could not go again.
    case QNetworkReply::ContentReSendError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return TSRNetworkError::connectionLost();
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return TSRNetworkError::timeout();
    case QNetworkReply::OperationCanceledError:
        // Qt ends an idle transfer with the same code as a deliberate abort.
        return endedByTimeout ? TSRNetworkError::timeout() : TSRNetworkError::custom(errorString);
    default:
        return TSRNetworkError::custom(errorString);
    }
}

bool TransportErrorMap::isTransportFailure(QNetworkReply::NetworkError code) {
    // Qt numbers network-layer errors 1-99 and proxy errors 101-199; content, protocol and
    // server errors (201 and up) only restate the HTTP status, except a body that could not be
    // sent again, which comes without any answer.
    return (code > QNetworkReply::NoError && code < QNetworkReply::ContentAccessDenied) ||
           code == QNetworkReply::ContentReSendError;
}

} // namespace tessara
