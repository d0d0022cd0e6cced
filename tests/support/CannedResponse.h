#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <optional>

namespace tessara::test {

// One answer of LoopbackHttpServer, described by how it goes on the wire.
struct CannedResponse {
    enum class Framing {
        ContentLength,  // "Content-Length: n", connection kept open
        Chunked,        // "Transfer-Encoding: chunked", one chunk and the last chunk
        CloseDelimited, // no length at all: the body ends when the connection closes
    };
    enum class Action {
        Respond,     // send the response described by the fields below
        NeverAnswer, // keep the connection open and send nothing
        Close,       // close the connection without a byte
    };

    Action action = Action::Respond;
    int status = 200;
    QList<QPair<QByteArray, QByteArray>> headers;
    // Absent: no body and no length; the connection closes after the headers.
    std::optional<QByteArray> body;
    Framing framing = Framing::ContentLength;
    // Close the connection after this many bytes of the complete response.
    std::optional<qsizetype> cutAfter;
    // Wait this long before answering.
    int delayMs = 0;

    static CannedResponse json(int status, const QByteArray& body);
    static CannedResponse text(int status, const QByteArray& body,
                               const QByteArray& contentType = "text/plain");
    static CannedResponse noBody(int status);
    static CannedResponse neverAnswer();
    static CannedResponse close();

    CannedResponse& withHeader(const QByteArray& name, const QByteArray& value);
    CannedResponse& withFraming(Framing value);
    CannedResponse& cutAfterBytes(qsizetype count);
    CannedResponse& afterMs(int milliseconds);

    // The bytes this response puts on the wire (before any cut).
    QByteArray bytes() const;
    // Whether the connection closes after the bytes.
    bool closesConnection() const;
};

} // namespace tessara::test
