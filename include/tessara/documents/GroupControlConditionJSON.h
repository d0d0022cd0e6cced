#pragma once

#include "tessara/documents/GroupControlOperatorType.h"

#include <QString>
#include <optional>

namespace tessara {

/// The visibility rule of a field; every key is optional. Wire keys: "fieldKey", "sectionKey",
/// "value", "operator" (groupOperator) and "hide" (shouldHide).
struct GroupControlConditionJSON {
    std::optional<QString> fieldKey;                       ///< The field whose value is watched.
    std::optional<QString> sectionKey;                     ///< The section that field lives in, if any.
    std::optional<QString> value;                          ///< The value it is compared with.
    std::optional<GroupControlOperatorType> groupOperator; ///< How it is compared.
    std::optional<bool> shouldHide; ///< Whether a match hides (true) or shows the field.

    /// Field-by-field equality.
    friend bool operator==(const GroupControlConditionJSON&, const GroupControlConditionJSON&) = default;
};

} // namespace tessara
