#include "backend/UploadStorage.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tessara {

UploadStorage::UploadStorage(QString rootDirectory)
    : root_(std::move(rootDirectory)) {}

QString UploadStorage::safeName(const QString& name) {
    QString result;
    result.reserve(name.size());
    for (const QChar c : name) {
        const bool reserved = c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':') ||
                              c == QLatin1Char('*') || c == QLatin1Char('?') || c == QLatin1Char('"') ||
                              c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('|');
        result += (reserved || c.category() == QChar::Other_Control) ? QLatin1Char('_') : c;
    }
    result = result.trimmed();
    // Names made only of dots would address the folder itself or its parent.
    if (result.isEmpty() || result.count(QLatin1Char('.')) == result.size())
        return QStringLiteral("file");
    return result.left(200);
}

std::optional<QString> UploadStorage::store(const QString& submissionId, const QString& key, int number,
                                            const QString& fileName, const QByteArray& data,
                                            QString* error) const {
    const QString folder = QDir(root_).filePath(safeName(submissionId) + QLatin1Char('/') + safeName(key));
    if (!QDir().mkpath(folder)) {
        *error = QStringLiteral("cannot create %1").arg(folder);
        return std::nullopt;
    }
    const QString path = QDir(folder).filePath(QStringLiteral("%1-%2").arg(number).arg(safeName(fileName)));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit()) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    return QFileInfo(path).absoluteFilePath();
}

} // namespace tessara
