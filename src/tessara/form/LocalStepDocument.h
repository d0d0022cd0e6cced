#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tessara {

// Step documents that ship with the SDK (a consent's terms, for instance), stored as
// resources named after their direction id.
class LocalStepDocument {
public:
    LocalStepDocument() = delete;

    // ":/tessara/<directionId>.json"
    static QString resourcePath(const QString& directionId);
    // The document's bytes; absent when the SDK ships none under that id. A document that
    // exists but cannot be read is fatal.
    static std::optional<QByteArray> load(const QString& directionId);
};

} // namespace tessara
