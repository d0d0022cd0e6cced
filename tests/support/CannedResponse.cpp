#include "support/CannedResponse.h"

namespace tessara::test {

CannedResponse CannedResponse::json(int status, const QByteArray& body) {
    return text(status, body, "application/json");
}

CannedResponse CannedResponse::text(int status, const QByteArray& body, const QByteArray& contentType) {
    CannedResponse response;
    response.status = status;
    response.body = body;
    response.headers.append({"Content-Type", contentType});
    return response;
}

CannedResponse CannedResponse::noBody(int status) {
    CannedResponse response;
    response.status = status;
    return response;
}

CannedResponse CannedResponse::neverAnswer() {
    CannedResponse response;
    response.action = Action::NeverAnswer;
    return response;
}

CannedResponse CannedResponse::close() {
    CannedResponse response;
    response.action = Action::Close;
    return response;
}

CannedResponse& CannedResponse::withHeader(const QByteArray& name, const QByteArray& value) {
    headers.append({name, value});
    return *this;
}

CannedResponse& CannedResponse::withFraming(Framing value) {
    framing = value;
    return *this;
}

CannedResponse& CannedResponse::cutAfterBytes(qsizetype count) {
    cutAfter = count;
    return *this;
}

CannedResponse& CannedResponse::afterMs(int milliseconds) {
    delayMs = milliseconds;
    return *this;
}

bool CannedResponse::closesConnection() const {
    return action != Action::Respond || !body || framing == Framing::CloseDelimited || cutAfter.has_value();
}

QByteArray CannedResponse::bytes() const {
    if (action != Action::Respond)
        return {};
    // The client reads the status code only; the phrase is never looked at.
    QByteArray out = "HTTP/1.1 " + QByteArray::number(status) + " Status\r\n";
    for (const auto& [name, value] : headers)
        out += name + ": " + value + "\r\n";
    if (body && framing == Framing::ContentLength)
        out += "Content-Length: " + QByteArray::number(body->size()) + "\r\n";
    if (body && framing == Framing::Chunked)
        out += "Transfer-Encoding: chunked\r\n";
    if (closesConnection())
        out += "Connection: close\r\n";
    out += "\r\n";
    if (body) {
        if (framing == Framing::Chunked) {
            if (!body->isEmpty())
                out += QByteArray::number(body->size(), 16) + "\r\n" + *body + "\r\n";
            out += "0\r\n\r\n";
        } else {
            out += *body;
        }
    }
    return out;
}

} // namespace tessara::test
