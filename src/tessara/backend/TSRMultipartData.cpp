#include "tessara/backend/TSRMultipartData.h"

#include "tessara/platform/FatalError.h"

#include <QUuid>

namespace tessara {

TSRMultipartData::TSRMultipartData()
    : TSRMultipartData(makeBoundary()) {}

TSRMultipartData::TSRMultipartData(QString boundary)
    : boundary(std::move(boundary)) {}

QString TSRMultipartData::makeBoundary() {
    return QStringLiteral("----TessaraFormBoundary") +
           QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

void TSRMultipartData::addPart(QByteArray data, QString contentType, QString partName, QString filename) {
    dataParts.push_back(
        {boundary, std::move(data), std::move(contentType), std::move(partName), std::move(filename)});
}

QByteArray TSRMultipartData::body() const {
    if (!isFinalized)
        fatalError(QStringLiteral("Multipart data is not finalized."));
    static const QByteArray crlf = QByteArrayLiteral("\r\n");
    QByteArray bytes;
    for (const DataPart& part : dataParts) {
        bytes += "--" + part.boundary.toUtf8() + crlf;
        bytes += "Content-Disposition: form-data; name=\"" + part.partName.toUtf8() + "\"; filename=\"" +
                 part.filename.toUtf8() + "\"" + crlf;
        bytes += "Content-Type: " + part.contentType.toUtf8() + crlf;
        bytes += crlf;
        bytes += part.data;
        bytes += crlf;
    }
    bytes += "--" + boundary.toUtf8() + "--" + crlf;
    return bytes;
}

} // namespace tessara
