#pragma once

#include "tessara/backend/TSRFile.h"

#include <QMimeType>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

class QFileDialog;
class QWidget;

namespace tessara {

// The file and photo choosers of upload fields: a non-blocking file dialog filtered to
// the field's allowed types. One file per pick, as an upload field holds one file.
class FilePicker {
public:
    enum class Source { documents, photos };

    FilePicker() = delete;

    // The dialog's name filter: the glob patterns of `allowed` (only the image types for
    // photos). No allowed type of the kind asked for offers every file, or every image.
    static QString nameFilter(Source source, const std::vector<QMimeType>& allowed);
    // Whether `type` is an image type (itself or by inheritance).
    static bool isImage(const QMimeType& type);

    // Reads the chosen file into an upload: its name, its content type and its bytes.
    // Absent (and logged) when the file cannot be read.
    static std::optional<TSRFile> readFile(const QString& path);

    // Opens the chooser without blocking; `picked` runs on the main thread with the file
    // once the user chose one that could be read. The dialog deletes itself when closed.
    static QFileDialog* open(QWidget* parent, Source source, const std::vector<QMimeType>& allowed,
                             std::function<void(const TSRFile&)> picked);
};

} // namespace tessara
