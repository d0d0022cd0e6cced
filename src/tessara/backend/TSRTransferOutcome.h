#pragma once

#include "tessara/backend/TSRNetworkError.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace tessara {

// What one finished transfer produced, as plain data: the result handlers map it to a
// document or an error without touching the network.
struct TSRTransferOutcome {
    // Set when the transfer got no usable HTTP response (refused, lost, timed out...).
    std::optional<TSRNetworkError> transportError;
    // The HTTP status; absent when there was no HTTP response.
    std::optional<int> statusCode;
    // The body as received, still content-coded; absent when the response carried none.
    std::optional<QByteArray> body;
    // Set when the body grew past ContentDecoder::MAX_DECODED_BODY_BYTES while it arrived and
    // the transfer was cut short: `body` is then present but empty, and never decodes.
    bool bodyOverLimit = false;
    // The response's Content-Encoding value, empty when none.
    QByteArray contentEncoding;
    // The request URL's absolute text, for `notFound`.
    QString url;

    // Whether a response carried a body, given how it was framed. Qt hands over the same
    // empty byte array for "no body" and "a body of zero bytes", so the framing decides:
    // a response has a body when it announced one (any Content-Length, zero included, or
    // chunked transfer coding) or when bytes arrived. HEAD answers and the statuses that
    // cannot carry a body (1xx, 204, 304) never have one.
    static bool hasBody(int statusCode, bool headRequest, bool hasContentLength, bool chunked,
                        qsizetype bytes);

    // The body with its Content-Encoding undone; absent when there is no body, the body
    // passed the limit or the coding cannot be undone.
    std::optional<QByteArray> decodedBody() const;
};

} // namespace tessara
