#include "host/AnswerBook.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessara::demo {

std::optional<AnswerBook> AnswerBook::load(const QString& path, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read the answers file %1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    auto book = fromJson(file.readAll(), QFileInfo(path).absolutePath(), error);
    if (!book)
        *error = path + QStringLiteral(": ") + *error;
    return book;
}

std::optional<AnswerBook> AnswerBook::fromJson(const QByteArray& json, const QString& baseDir,
                                               QString* error) {
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error =
            QStringLiteral("not JSON (%1 at offset %2)").arg(parseError.errorString()).arg(parseError.offset);
        return std::nullopt;
    }
    if (!doc.isObject()) {
        *error = QStringLiteral("the answers must be one JSON object from field key to value");
        return std::nullopt;
    }
    AnswerBook book;
    book.baseDir_ = baseDir;
    const QJsonObject object = doc.object();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QJsonValue v = it.value();
        if (v.isString()) {
            book.answers_.insert(it.key(), v.toString());
        } else if (v.isBool()) {
            book.answers_.insert(it.key(), v.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
        } else if (v.isDouble()) {
            // The JSON text of the number, so 10 stays "10" and not "10.0".
            book.answers_.insert(
                it.key(),
                QString::fromUtf8(
                    QJsonDocument(QJsonObject{{"n", v}}).toJson(QJsonDocument::Compact).mid(5).chopped(1)));
        } else {
            *error =
                QStringLiteral("the answer for \"%1\" must be a string, a boolean or a number").arg(it.key());
            return std::nullopt;
        }
    }
    return book;
}

std::optional<QString> AnswerBook::answer(const QString& key) const {
    const auto it = answers_.constFind(key);
    if (it == answers_.constEnd())
        return std::nullopt;
    return *it;
}

QString AnswerBook::resolvePath(const QString& path) const {
    if (QFileInfo(path).isAbsolute() || baseDir_.isEmpty())
        return QDir::cleanPath(path);
    return QDir::cleanPath(QDir(baseDir_).absoluteFilePath(path));
}

} // namespace tessara::demo
