#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tessara {

// Where uploaded files go: root/<submission>/<field key>/<number>-<file name>. Every upload keeps
// its own file, so a repeated upload of one field (the client retries the whole chain after a
// failure) never overwrites the evidence of the first.
class UploadStorage {
public:
    explicit UploadStorage(QString rootDirectory);

    const QString& rootDirectory() const { return root_; }

    // Writes `data`; returns the absolute path, or nullopt with `error` set.
    std::optional<QString> store(const QString& submissionId, const QString& key, int number,
                                 const QString& fileName, const QByteArray& data, QString* error) const;

    // `name` made safe as one path component: the last component only, with path separators,
    // control characters and characters that some file systems refuse replaced by "_".
    // Letters of any script stay.
    static QString safeName(const QString& name);

private:
    QString root_;
};

} // namespace tessara
