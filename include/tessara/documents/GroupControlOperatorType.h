#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string_view>

namespace tessara {

/// Comparison of a visibility rule.
enum class GroupControlOperatorType {
    equal,    ///< "EQUAL"
    notEqual, ///< "NOT_EQ"
};

/// The wire string of a case.
///@{
QString rawValue(GroupControlOperatorType type);
std::string_view rawValueUtf8(GroupControlOperatorType type);
///@}
/// The case of a wire string; std::nullopt for an unknown string.
///@{
std::optional<GroupControlOperatorType> groupControlOperatorTypeFromRaw(QStringView raw);
std::optional<GroupControlOperatorType> groupControlOperatorTypeFromRaw(std::string_view raw);
///@}

} // namespace tessara
