#pragma once

#include <QString>

namespace tessara {

/// The client's own failures. Kinds keep their fixed order; `custom`, `notFound` and
/// `httpCode` carry a payload, the others none.
class TSRNetworkError {
public:
    /// What went wrong.
    enum class Kind {
        custom,     ///< A transport failure in Qt's words: refused, unreachable, TLS (certificate) error...
        notFound,   ///< HTTP 404; carries the URL.
        httpCode,   ///< An upload answered with another 4xx or 5xx status; carries it.
        invalidURL, ///< No usable http(s) URL could be made; nothing was sent.
        requestFailed,   ///< An answer without a body, or a network error Qt cannot name.
        decodingFailure, ///< The body could not be decoded as the document expected.
        encodingFailure, ///< The request body could not be encoded; nothing was sent.
        timeout,         ///< No progress within the time-out.
        connectionLost,  ///< The connection dropped (closed by the peer, network failure).
    };

    /// An error of that kind (with its payload).
    ///@{
    static TSRNetworkError custom(const QString& text) { return {Kind::custom, text, 0}; }
    static TSRNetworkError notFound(const QString& url) { return {Kind::notFound, url, 0}; }
    static TSRNetworkError httpCode(int status) { return {Kind::httpCode, {}, status}; }
    static TSRNetworkError invalidURL() { return {Kind::invalidURL, {}, 0}; }
    static TSRNetworkError requestFailed() { return {Kind::requestFailed, {}, 0}; }
    static TSRNetworkError decodingFailure() { return {Kind::decodingFailure, {}, 0}; }
    static TSRNetworkError encodingFailure() { return {Kind::encodingFailure, {}, 0}; }
    static TSRNetworkError timeout() { return {Kind::timeout, {}, 0}; }
    static TSRNetworkError connectionLost() { return {Kind::connectionLost, {}, 0}; }
    ///@}

    Kind kind() const { return kind_; } ///< What went wrong.
    /// Payload of `custom` (the words) and `notFound` (the URL); empty otherwise.
    const QString& text() const { return text_; }
    /// Payload of `httpCode`; 0 otherwise.
    int statusCode() const { return status_; }

    /// The words shown to the user.
    QString errorDescription() const;

    /// Same kind and payload.
    friend bool operator==(const TSRNetworkError&, const TSRNetworkError&) = default;

private:
    TSRNetworkError(Kind kind, QString text, int status)
        : kind_(kind)
        , text_(std::move(text))
        , status_(status) {}

    Kind kind_;
    QString text_;
    int status_;
};

} // namespace tessara
