#include "backend/UploadEndpoint.h"

#include "backend/MultipartParser.h"
#include "tessara/documents/UploadFileDTO.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <nlohmann/json.hpp>

namespace tessara {

namespace {

// Whether the file's name or its declared type carries one of the allowed extensions. The client
// may send "scan.PDF" (it upper-cases the suffix it adds), so the test ignores case.
bool extensionAllowed(const QStringList& allowed, const QString& fileName, const QByteArray& contentType) {
    QStringList suffixes{QFileInfo(fileName).suffix().toLower()};
    const QMimeType type = QMimeDatabase().mimeTypeForName(
        QString::fromLatin1(contentType).section(QLatin1Char(';'), 0, 0).trimmed());
    if (type.isValid()) {
        for (const QString& suffix : type.suffixes())
            suffixes << suffix.toLower();
    }
    for (const QString& extension : allowed) {
        if (suffixes.contains(extension.toLower()))
            return true;
    }
    return false;
}

} // namespace

UploadEndpoint::UploadEndpoint(const ProcessStore& processes, SubmissionStore& submissions,
                               const UploadStorage& storage)
    : processes_(processes)
    , submissions_(submissions)
    , storage_(storage) {}

void UploadEndpoint::addRoutes(RouteTable& routes) {
    routes.add("POST", QStringLiteral("/step/uploadFile"),
               [this](const BackendRequest& request, const QStringList&) { return upload(request); });
}

BackendResponse UploadEndpoint::upload(const BackendRequest& request) {
    const auto boundary =
        MultipartParser::boundaryFromContentType(request.header("Content-Type").value_or(""));
    if (!boundary)
        return BackendResponse::badRequest(
            QStringLiteral("Очаква се тяло multipart/form-data с параметър boundary."));
    const MultipartParseResult parsed = MultipartParser::parse(request.body, *boundary);
    if (!parsed.ok())
        return BackendResponse::badRequest(
            QStringLiteral("Неправилно multipart тяло: %1.").arg(*parsed.error));
    const MultipartPart* file = parsed.part("file");
    const MultipartPart* dtoPart = parsed.part("dto");
    if (!file || !dtoPart)
        return BackendResponse::badRequest(
            QStringLiteral("Тялото трябва да съдържа части \"file\" и \"dto\"."));
    const auto dto = decodeDocument<UploadFileDTO>(dtoPart->data);
    if (!dto)
        return BackendResponse::badRequest(QStringLiteral(
            "Частта \"dto\" трябва да е JSON с \"submissionId\", \"key\" и \"fromDirectionId\"."));

    SubmissionRecord* submission = submissions_.find(dto->submissionId);
    if (!submission)
        return BackendResponse::badRequest(
            QStringLiteral("Непозната заявка: \"%1\".").arg(dto->submissionId));
    const ProcessDefinition* process = processes_.process(submission->processId);
    const FieldJSON* field = process ? process->findField(dto->fromDirectionId, dto->key) : nullptr;
    if (!field || field->type != FieldType::uploadFile)
        return BackendResponse::badRequest(
            QStringLiteral("Стъпка \"%1\" няма поле за файл \"%2\".").arg(dto->fromDirectionId, dto->key));

    const QString fileName = file->fileName.value_or(QStringLiteral("file"));
    if (field->maximumFileSize && quint64(file->data.size()) > (*field->maximumFileSize << 20))
        return BackendResponse::badRequest(field->fileSizeError.value_or(
            QStringLiteral("Файлът е по-голям от %1 MB.").arg(*field->maximumFileSize)));
    if (field->allowedFileExtensions && !extensionAllowed(QStringList(field->allowedFileExtensions->begin(),
                                                                      field->allowedFileExtensions->end()),
                                                          fileName, file->contentType))
        return BackendResponse::badRequest(
            field->fileExtensionError.value_or(QStringLiteral("Този вид файл не се приема.")));

    QString error;
    const int number = int(submission->uploads.size()) + 1;
    const auto path =
        storage_.store(submission->submissionId, dto->key, number, fileName, file->data, &error);
    if (!path)
        return BackendResponse::error(500, QStringLiteral("Файлът не може да бъде записан: %1").arg(error));
    submission->uploads.push_back(StoredUpload{dto->key, dto->fromDirectionId, fileName,
                                               qint64(file->data.size()),
                                               QString::fromUtf8(file->contentType), *path});
    return BackendResponse::fromJson(
        {{"key", dto->key.toStdString()}, {"fileName", fileName.toStdString()}, {"size", file->data.size()}});
}

} // namespace tessara
