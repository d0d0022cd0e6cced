#pragma once

#include <QString>

namespace tessara {

// The client's own failures. Kinds keep their fixed order; `custom`, `notFound` and
// `httpCode` carry a payload, the others none.
class TSRNetworkError {
public:
    enum class Kind {
        custom,
        notFound,
        httpCode,
        invalidURL,
        requestFailed,
        decodingFailure,
        encodingFailure,
        timeout,
        connectionLost,
    };

    static TSRNetworkError custom(const QString& text) { return {Kind::custom, text, 0}; }
    static TSRNetworkError notFound(const QString& url) { return {Kind::notFound, url, 0}; }
    static TSRNetworkError httpCode(int status) { return {Kind::httpCode, {}, status}; }
    static TSRNetworkError invalidURL() { return {Kind::invalidURL, {}, 0}; }
    static TSRNetworkError requestFailed() { return {Kind::requestFailed, {}, 0}; }
    static TSRNetworkError decodingFailure() { return {Kind::decodingFailure, {}, 0}; }
    static TSRNetworkError encodingFailure() { return {Kind::encodingFailure, {}, 0}; }
    static TSRNetworkError timeout() { return {Kind::timeout, {}, 0}; }
    static TSRNetworkError connectionLost() { return {Kind::connectionLost, {}, 0}; }

    Kind kind() const { return kind_; }
    // Payload of `custom` (the words) and `notFound` (the URL); empty otherwise.
    const QString& text() const { return text_; }
    // Payload of `httpCode`; 0 otherwise.
    int statusCode() const { return status_; }

    // The words shown to the user.
    QString errorDescription() const;

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
