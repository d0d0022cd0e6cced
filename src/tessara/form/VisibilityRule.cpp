#include "tessara/form/VisibilityRule.h"

#include "tessara/platform/FatalError.h"

namespace tessara {

bool VisibilityRule::hiddenAfterAnnouncement(const std::optional<GroupControlConditionJSON>& condition,
                                             const QVariantMap& userInfo) {
    const auto entry = userInfo.constFind(QStringLiteral("value"));
    if (entry == userInfo.constEnd() || entry->typeId() != QMetaType::QString || !condition)
        return true;
    if (!condition->groupOperator || !condition->shouldHide)
        fatalError(QStringLiteral("A visibility rule needs both an operator and a hide flag."));

    const QString announced = entry->toString();
    // An absent rule value never equals an announced text, not even an empty one.
    const bool equal = condition->value && *condition->value == announced;
    const bool satisfied = *condition->groupOperator == GroupControlOperatorType::equal ? equal : !equal;
    return satisfied ? *condition->shouldHide : !*condition->shouldHide;
}

} // namespace tessara
