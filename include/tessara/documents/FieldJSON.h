#pragma once

#include "tessara/documents/FieldOption.h"
#include "tessara/documents/FieldType.h"
#include "tessara/documents/GroupControlConditionJSON.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// One element of a form step. Only "type" is required; every other key is optional, and absent or
// null gives an absent value. Wire keys that differ from the field names: "required" (isRequired),
// "hidden" (isHidden), "allowedExt", "maxSize" (in units of 1048576 bytes), "sizeError", "extError",
// "allignment" (alignment, spelt with two l on the wire).
// `fields` is never read from nor written to JSON: the section expansion fills it.
struct FieldJSON {
    FieldType type = FieldType::text;
    std::optional<QString> value;
    std::optional<QString> styleClass;
    std::optional<QString> key;
    std::optional<QString> validation;
    std::optional<QString> validationError;
    std::optional<QString> label;
    std::optional<bool> isRequired;
    std::optional<std::vector<FieldOption>> options;
    std::optional<QString> directionId;
    std::optional<bool> isHidden; // changed at run time by visibility rules
    std::optional<bool> hideInEndUserFrontend;
    std::optional<GroupControlConditionJSON> condition;
    std::optional<QString> directionLabel;
    std::optional<QString> variableLabel;
    std::optional<QString> variableType;
    std::optional<QString> specialType; // compare with rawValue(SpecialType::...)
    std::optional<qint64> fieldId;
    std::optional<qint64> flowFieldId;
    std::optional<QString> flowDirectionId;
    std::optional<QString> flowDirectionType;
    std::optional<std::vector<FieldJSON>> consentContent;
    std::optional<std::vector<QString>> allowedFileExtensions;
    std::optional<quint64> maximumFileSize;
    std::optional<QString> fileSizeError;
    std::optional<QString> fileExtensionError;
    std::optional<QString> alignment;
    std::optional<QString> notes;
    std::optional<std::vector<FieldJSON>> fields; // filled by section expansion only

    friend bool operator==(const FieldJSON&, const FieldJSON&) = default;
};

} // namespace tessara
