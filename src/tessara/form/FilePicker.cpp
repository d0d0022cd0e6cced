#include "tessara/form/FilePicker.h"

#include "tessara/platform/Logging.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>

namespace tessara {

bool FilePicker::isImage(const QMimeType& type) {
    if (type.name().startsWith(QLatin1String("image/")))
        return true;
    for (const QString& parent : type.allAncestors()) {
        if (parent.startsWith(QLatin1String("image/")))
            return true;
    }
    return false;
}

QString FilePicker::nameFilter(Source source, const std::vector<QMimeType>& allowed) {
    QStringList patterns;
    for (const QMimeType& type : allowed) {
        if (source == Source::photos && !isImage(type))
            continue;
        for (const QString& glob : type.globPatterns()) {
            if (!patterns.contains(glob))
                patterns << glob;
        }
    }
    if (patterns.isEmpty()) {
        if (source == Source::documents)
            return QStringLiteral("Всички файлове (*)");
        // No image type declared: offer the common photo formats.
        QMimeDatabase db;
        for (const char* name : {"image/jpeg", "image/png", "image/heic", "image/heif", "image/webp"}) {
            for (const QString& glob : db.mimeTypeForName(QLatin1String(name)).globPatterns()) {
                if (!patterns.contains(glob))
                    patterns << glob;
            }
        }
    }
    const QString title =
        source == Source::photos ? QStringLiteral("Снимки") : QStringLiteral("Разрешени файлове");
    return title + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
}

std::optional<TSRFile> FilePicker::readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCCritical(lcTessara).noquote() << "did not read, url: " + QUrl::fromLocalFile(path).toString() +
                                               ", error: " + file.errorString();
        return std::nullopt;
    }
    TSRFile picked;
    picked.data = file.readAll();
    const QFileInfo info(path);
    picked.type = QMimeDatabase().mimeTypeForFile(info);
    picked.filename = info.fileName();
    // A name without a suffix gets the type's own on upload, so the backend can tell it.
    picked.filenameAlreadyHasExtension = !info.suffix().isEmpty();
    return picked;
}

QFileDialog* FilePicker::open(QWidget* parent, Source source, const std::vector<QMimeType>& allowed,
                              std::function<void(const TSRFile&)> picked) {
    const QString title =
        source == Source::photos ? QStringLiteral("Photo Library") : QStringLiteral("Other File");
    auto* dialog = new QFileDialog(parent, title); // owned by `parent`; deletes itself on close
    dialog->setObjectName(source == Source::photos ? QStringLiteral("FilePicker.photos")
                                                   : QStringLiteral("FilePicker.documents"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The same chooser on every platform, and one that tests and the autopilot can drive.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setNameFilter(nameFilter(source, allowed));
    const auto location =
        source == Source::photos ? QStandardPaths::PicturesLocation : QStandardPaths::DocumentsLocation;
    const QStringList places = QStandardPaths::standardLocations(location);
    if (!places.isEmpty())
        dialog->setDirectory(places.first());
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [picked = std::move(picked)](const QString& path) {
                         if (path.isEmpty())
                             return;
                         if (auto file = readFile(path))
                             picked(*file);
                     });
    QObject::connect(dialog, &QFileDialog::rejected, dialog,
                     [] { qCCritical(lcTessara) << "The file chooser was cancelled."; });
    dialog->open();
    return dialog;
}

} // namespace tessara
