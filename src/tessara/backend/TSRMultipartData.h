#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace tessara {

// A multipart/form-data body assembled in memory. Parts are added in order; the body can
// only be taken once the data is finalized.
struct TSRMultipartData {
    struct DataPart {
        QString boundary;
        QByteArray data;
        QString contentType;
        QString partName;
        QString filename;
    };

    QString boundary;
    std::vector<DataPart> dataParts;
    bool isFinalized = false;

    // Starts an empty body with a fresh boundary.
    TSRMultipartData();
    explicit TSRMultipartData(QString boundary);

    // "----TessaraFormBoundary" and a new UUID in upper case with dashes; never repeats.
    static QString makeBoundary();

    void addPart(QByteArray data, QString contentType, QString partName, QString filename);

    // The bytes: each part as boundary line, disposition, content type, blank line, data,
    // CR LF; then the closing boundary. Names are written as they are, quotes unescaped.
    // Taking the body before finalizing ends the program.
    QByteArray body() const;
};

} // namespace tessara
