#include "tessara/form/LocalStepDocument.h"

#include "tessara/platform/FatalError.h"
#include "tessara/resources/BundledResources.h"

#include <QFile>

namespace tessara {

QString LocalStepDocument::resourcePath(const QString& directionId) {
    return QStringLiteral(":/tessara/") + directionId + QStringLiteral(".json");
}

std::optional<QByteArray> LocalStepDocument::load(const QString& directionId) {
    ensureBundledResources();
    QFile file(resourcePath(directionId));
    if (!file.exists())
        return std::nullopt;
    if (!file.open(QIODevice::ReadOnly))
        fatalError(QStringLiteral("The bundled step \"%1\" could not be read: %2")
                       .arg(directionId, file.errorString()));
    return file.readAll();
}

} // namespace tessara
