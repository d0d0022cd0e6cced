#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string_view>

namespace tessara {

/// The kind of a form element; the raw strings are the wire values.
enum class FieldType {
    text,
    newLine,
    horizontalLine,
    inputField,
    inputArea,
    checkbox,
    radioButtons,
    dropdown,
    flowButton,
    section,
    group,
    consent,
    submitButton,
    uploadFile,
    hint,
    link,
    nomenclature,
    date,
};

/// The wire string of a case ("TEXT", "NEW_LINE", ...).
///@{
QString rawValue(FieldType type);
std::string_view rawValueUtf8(FieldType type);
///@}
/// The case of a wire string; std::nullopt for an unknown string.
///@{
std::optional<FieldType> fieldTypeFromRaw(QStringView raw);
std::optional<FieldType> fieldTypeFromRaw(std::string_view raw);
///@}

} // namespace tessara
