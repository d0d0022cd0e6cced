#pragma once

#include <QByteArray>
#include <QMimeType>
#include <QString>

namespace tessara {

/// A file chosen by the user, ready to upload.
struct TSRFile {
    QByteArray data; ///< The file's bytes, sent as they are.
    /// The kind of file; its MIME name and preferred suffix go on the wire.
    QMimeType type;
    QString filename; ///< The name sent with the file.
    /// When false, "." and the type's preferred suffix in upper case are appended on upload.
    bool filenameAlreadyHasExtension = false;
};

} // namespace tessara
