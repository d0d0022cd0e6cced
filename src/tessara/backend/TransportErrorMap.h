#pragma once

#include "tessara/backend/TSRNetworkError.h"

#include <QNetworkReply>
#include <QString>

namespace tessara {

// The one table from a transfer's own failure to the client's error, for transfers that
// got no usable HTTP response:
//
// | QNetworkReply::NetworkError                                  | error            |
// |--------------------------------------------------------------|------------------|
// | UnknownNetworkError                                          | requestFailed    |
// | RemoteHostClosedError, TemporaryNetworkFailureError,         | connectionLost   |
// | NetworkSessionFailedError                                    |                  |
// | TimeoutError, ProxyTimeoutError                              | timeout          |
// | OperationCanceledError, ended by the transfer time-out       | timeout          |
// | any other (a cancel by a caller included)                    | custom(words)    |
//
// `custom` carries Qt's own description of the failure.
class TransportErrorMap {
public:
    static TSRNetworkError map(QNetworkReply::NetworkError code, bool endedByTimeout,
                               const QString& errorString);

    // True for failures of the connection itself (network layer and proxy). A reply that
    // failed this way is treated as having no HTTP response even when a status line had
    // already arrived: a body cut off mid-way is a lost connection, not a short document.
    static bool isTransportFailure(QNetworkReply::NetworkError code);
};

} // namespace tessara
