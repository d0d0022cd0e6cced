#pragma once

#include "backend/ProcessDefinition.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tessara {

struct ProcessLoadResult {
    std::optional<ProcessDefinition> process; // set only when `errors` is empty
    QStringList errors;                       // each one names its file
};

// Reads one process directory: process.json, steps/*.json, sections/*.json and an optional
// products.json (README.md gives the format). Every document must decode under the SDK's own
// rules; the cross-references between them are ProcessValidator's business.
class ProcessLoader {
public:
    static constexpr const char* kProcessFile = "process.json";
    static constexpr const char* kProductsFile = "products.json";
    static constexpr const char* kStepsFolder = "steps";
    static constexpr const char* kSectionsFolder = "sections";

    static ProcessLoadResult load(const QString& directory);

    // Why `bytes` do not decode as a step document, as precisely as can be told: JSON syntax
    // with its position, the field that fails, or the part of the document that fails.
    static QString describeStepFailure(const QByteArray& bytes);
};

} // namespace tessara
