#include "support/RecordedRequest.h"

#include <QUrl>

namespace tessara::test {

namespace {

QByteArray findHeader(const QList<QPair<QByteArray, QByteArray>>& headers, const QByteArray& name) {
    for (const auto& [field, value] : headers) {
        if (field.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

} // namespace

QByteArray MultipartPart::header(const QByteArray& name) const {
    return findHeader(headers, name);
}

QByteArray RecordedRequest::header(const QByteArray& name) const {
    return findHeader(headers, name);
}

bool RecordedRequest::hasHeader(const QByteArray& name) const {
    for (const auto& header : headers) {
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QList<QByteArray> RecordedRequest::headerNames() const {
    QList<QByteArray> names;
    for (const auto& header : headers)
        names.append(header.first);
    return names;
}

QByteArray RecordedRequest::path() const {
    const qsizetype query = target.indexOf('?');
    return query < 0 ? target : target.left(query);
}

QList<QPair<QString, QString>> RecordedRequest::queryItems() const {
    QList<QPair<QString, QString>> items;
    const qsizetype query = target.indexOf('?');
    if (query < 0)
        return items;
    for (const QByteArray& pair : target.mid(query + 1).split('&')) {
        if (pair.isEmpty())
            continue;
        const qsizetype equals = pair.indexOf('=');
        const QByteArray name = equals < 0 ? pair : pair.left(equals);
        const QByteArray value = equals < 0 ? QByteArray() : pair.mid(equals + 1);
        items.append({QUrl::fromPercentEncoding(name), QUrl::fromPercentEncoding(value)});
    }
    return items;
}

std::optional<QList<MultipartPart>> RecordedRequest::multipartParts() const {
    const QByteArray contentType = header("Content-Type");
    const QByteArray marker = "boundary=";
    const qsizetype at = contentType.indexOf(marker);
    if (at < 0)
        return std::nullopt;
    const QByteArray delimiter = "--" + contentType.mid(at + marker.size());
    QList<MultipartPart> parts;
    qsizetype pos = 0;
    for (;;) {
        if (body.mid(pos, delimiter.size()) != delimiter)
            return std::nullopt;
        pos += delimiter.size();
        if (body.mid(pos) == "--\r\n")
            return parts;
        if (body.mid(pos, 2) != "\r\n")
            return std::nullopt;
        pos += 2;
        MultipartPart part;
        for (;;) {
            const qsizetype lineEnd = body.indexOf("\r\n", pos);
            if (lineEnd < 0)
                return std::nullopt;
            const QByteArray line = body.mid(pos, lineEnd - pos);
            pos = lineEnd + 2;
            if (line.isEmpty())
                break;
            const qsizetype colon = line.indexOf(':');
            if (colon < 0)
                return std::nullopt;
            part.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
        }
        const qsizetype next = body.indexOf("\r\n" + delimiter, pos);
        if (next < 0)
            return std::nullopt;
        part.data = body.mid(pos, next - pos);
        parts.append(part);
        pos = next + 2;
    }
}

std::optional<RecordedRequest> RecordedRequest::parse(const QByteArray& buffer, qsizetype* consumed) {
    const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    RecordedRequest request;
    const QList<QByteArray> lines = buffer.left(headEnd).split('\n');
    const QList<QByteArray> requestLine = lines.first().trimmed().split(' ');
    if (requestLine.size() != 3)
        return std::nullopt;
    request.method = requestLine[0];
    request.target = requestLine[1];
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines[i].endsWith('\r') ? lines[i].chopped(1) : lines[i];
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    }
    // The client always sends a length: its bodies are byte arrays, never streamed.
    const qsizetype bodyStart = headEnd + 4;
    const qsizetype end = bodyStart + request.header("Content-Length").toLongLong();
    if (buffer.size() < end)
        return std::nullopt;
    request.body = buffer.mid(bodyStart, end - bodyStart);
    request.raw = buffer.left(end);
    *consumed = end;
    return request;
}

} // namespace tessara::test
