#pragma once

#include "tessara/documents/FieldOption.h"
#include "tessara/documents/FieldType.h"
#include "tessara/documents/GroupControlConditionJSON.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

/// One element of a form step. Only "type" is required; every other key is optional, and absent or
/// null gives an absent value. Wire keys that differ from the field names: "required" (isRequired),
/// "hidden" (isHidden), "allowedExt", "maxSize" (in units of 1048576 bytes), "sizeError", "extError",
/// "allignment" (alignment, spelt with two l on the wire).
/// `fields` is never read from nor written to JSON: the section expansion fills it.
struct FieldJSON {
    FieldType type = FieldType::text;  ///< The kind of element; chooses the control.
    std::optional<QString> value;      ///< The initial or fixed value, as text.
    std::optional<QString> styleClass; ///< Layout hints (position, closing screen).
    /// The name the value is submitted under; a control without one ends the program.
    std::optional<QString> key;
    std::optional<QString> validation;                  ///< A regular expression the input must match.
    std::optional<QString> validationError;             ///< The words shown when it does not.
    std::optional<QString> label;                       ///< Shown to the user.
    std::optional<bool> isRequired;                     ///< True, false or absent.
    std::optional<std::vector<FieldOption>> options;    ///< The entries of a choice field.
    std::optional<QString> directionId;                 ///< The step a flow button or link leads to.
    std::optional<bool> isHidden;                       ///< Changed at run time by the visibility rules.
    std::optional<bool> hideInEndUserFrontend;          ///< True: hidden when the form is built.
    std::optional<GroupControlConditionJSON> condition; ///< The visibility rule.
    std::optional<QString> directionLabel;              ///< A button's or link's title.
    std::optional<QString> variableLabel;               ///< A popup's title when no label gives one.
    std::optional<QString> variableType;      ///< Present: hidden at build unless empty (isHidden unread).
    std::optional<QString> specialType;       ///< Compare with rawValue(SpecialType::...).
    std::optional<qint64> fieldId;            ///< The backend's id of the field.
    std::optional<qint64> flowFieldId;        ///< Kept as received; the SDK does not read it.
    std::optional<QString> flowDirectionId;   ///< Kept as received; the SDK does not read it.
    std::optional<QString> flowDirectionType; ///< Kept as received; the SDK does not read it.
    std::optional<std::vector<FieldJSON>> consentContent;      ///< The elements a consent's popup shows.
    std::optional<std::vector<QString>> allowedFileExtensions; ///< Upload: the extensions accepted.
    std::optional<quint64> maximumFileSize;                    ///< Upload: the largest file, in MiB.
    std::optional<QString> fileSizeError;                      ///< Upload: the words for a file too large.
    std::optional<QString> fileExtensionError;                 ///< Upload: the words for a refused extension.
    std::optional<QString> alignment;             ///< Kept as received; the SDK does not read it.
    std::optional<QString> notes;                 ///< More layout hints, read like styleClass.
    std::optional<std::vector<FieldJSON>> fields; ///< Filled by the section expansion only.

    /// Field-by-field equality.
    friend bool operator==(const FieldJSON&, const FieldJSON&) = default;
};

} // namespace tessara
