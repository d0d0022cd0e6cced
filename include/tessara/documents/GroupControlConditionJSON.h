#pragma once

#include "tessara/documents/GroupControlOperatorType.h"

#include <QString>
#include <optional>

namespace tessara {

// The visibility rule of a field; every key is optional. Wire keys: "fieldKey", "sectionKey",
// "value", "operator" (groupOperator) and "hide" (shouldHide).
struct GroupControlConditionJSON {
    std::optional<QString> fieldKey;
    std::optional<QString> sectionKey;
    std::optional<QString> value;
    std::optional<GroupControlOperatorType> groupOperator;
    std::optional<bool> shouldHide;

    friend bool operator==(const GroupControlConditionJSON&, const GroupControlConditionJSON&) = default;
};

} // namespace tessara
