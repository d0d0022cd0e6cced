#include "NetworkTestSupport.h"
#include "tessara/backend/TSRMultipartData.h"

#include <QMimeDatabase>
#include <QRegularExpression>

namespace tessara {
namespace {

QMimeType mime(const char* name) {
    return QMimeDatabase().mimeTypeForName(QString::fromLatin1(name));
}

const UploadFileDTO kDto{QStringLiteral("sub-1"), QStringLiteral("idFront"), QStringLiteral("dir-7")};
const QByteArray kDtoJson = R"({"fromDirectionId":"dir-7","key":"idFront","submissionId":"sub-1"})";

QByteArray expectedBody(const QString& boundary, const QByteArray& fileName, const QByteArray& fileType,
                        const QByteArray& data) {
    const QByteArray b = boundary.toUtf8();
    return "--" + b + "\r\n" + "Content-Disposition: form-data; name=\"file\"; filename=\"" + fileName +
           "\"\r\n" + "Content-Type: " + fileType + "\r\n\r\n" + data + "\r\n" + "--" + b + "\r\n" +
           "Content-Disposition: form-data; name=\"dto\"; filename=\"blob\"\r\n" +
           "Content-Type: application/json\r\n\r\n" + kDtoJson + "\r\n" + "--" + b + "--\r\n";
}

QString boundaryOf(const TSRHTTPRequest& request) {
    for (const TSRHTTPHeader& header : *request.headers) {
        if (header.field == QLatin1String("Content-Type"))
            return header.value.section(QStringLiteral("boundary="), 1);
    }
    return {};
}

TEST(Multipart, UploadBodyIsLaidOutByteForByte) {
    struct Row {
        const char* name;
        TSRFile file;
        QByteArray sentName;
        QByteArray sentType;
    };
    const std::vector<Row> rows = {
        {"pdf named without extension",
         {QByteArray("%PDF-1.4\n"), mime("application/pdf"), QStringLiteral("scan"), false},
         "scan.PDF",
         "application/pdf"},
        {"empty file",
         {QByteArray(), mime("image/jpeg"), QStringLiteral("photo.jpg"), true},
         "photo.jpg",
         "image/jpeg"},
        {"space and non-ASCII name unchanged",
         {QByteArray("\x89PNG\r\n", 6), mime("image/png"), QStringLiteral("лична карта 1.png"), true},
         QStringLiteral("лична карта 1.png").toUtf8(),
         "image/png"},
        {"quotes are not escaped",
         {QByteArray("x"), mime("text/plain"), QStringLiteral("a\"b"), false},
         "a\"b.TXT",
         "text/plain"},
        {"unknown type",
         {QByteArray("x"), QMimeType(), QStringLiteral("blob"), false},
         "blob.",
         "application/octet-stream"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto request = TSRNetwork::shared().transport().makeUploadRequest(
            TSRHTTPMethod::post, QStringLiteral("/step/uploadFile"), row.file, kDto);
        ASSERT_TRUE(request.has_value());
        const QString boundary = boundaryOf(*request);
        EXPECT_TRUE(
            QRegularExpression(QStringLiteral("^----TessaraFormBoundary[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-"
                                              "[0-9A-F]{4}-[0-9A-F]{12}$"))
                .match(boundary)
                .hasMatch())
            << boundary.toStdString();
        EXPECT_EQ(*request->body, expectedBody(boundary, row.sentName, row.sentType, row.file.data));
    }
}

TEST(Multipart, EveryUploadHasItsOwnBoundary) {
    const TSRFile file{QByteArray("x"), mime("text/plain"), QStringLiteral("a.txt"), true};
    QSet<QString> boundaries;
    for (int i = 0; i < 50; ++i) {
        const auto request = TSRNetwork::shared().transport().makeUploadRequest(
            TSRHTTPMethod::post, QStringLiteral("/step/uploadFile"), file, kDto);
        boundaries.insert(boundaryOf(*request));
    }
    EXPECT_EQ(boundaries.size(), 50);
}

TEST(Multipart, AnUnencodableRecordMakesNoRequest) {
    const TSRFile file{QByteArray("x"), mime("text/plain"), QStringLiteral("a.txt"), true};
    // An unpaired surrogate cannot become UTF-8 JSON text.
    const UploadFileDTO broken{QString(QChar(0xD800)), QStringLiteral("k"), QStringLiteral("d")};
    EXPECT_FALSE(TSRNetwork::shared().transport().makeUploadRequest(
        TSRHTTPMethod::post, QStringLiteral("/step/uploadFile"), file, broken));
}

TEST(MultipartDeathTest, TakingTheBodyBeforeFinalizingEndsTheProgram) {
    TSRMultipartData data;
    data.addPart(QByteArray("x"), QStringLiteral("text/plain"), QStringLiteral("file"), QStringLiteral("a"));
    EXPECT_DEATH((void)data.body(), "Multipart data is not finalized\\.");
}

} // namespace
} // namespace tessara
