#pragma once

#include "tessara/documents/GroupControlConditionJSON.h"

#include <QVariantMap>
#include <optional>

namespace tessara {

// Decides a section's hidden state from a field's announced value. The rule always
// decides both ways: a satisfied rule applies `shouldHide`, an unsatisfied one its opposite.
class VisibilityRule {
public:
    VisibilityRule() = delete;

    // The hidden state after an announcement carrying `userInfo`. A missing or non-text
    // "value", or no condition, hides. A condition without operator or hide flag is fatal.
    static bool hiddenAfterAnnouncement(const std::optional<GroupControlConditionJSON>& condition,
                                        const QVariantMap& userInfo);
};

} // namespace tessara
