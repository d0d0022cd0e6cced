#pragma once

#include <QString>
#include <optional>

class QWidget;

namespace tessara {

// A narrow request a control makes of its screen. A control never holds its screen: it
// walks its parent chain (parentResponders) and uses the first object that implements
// the interface; with none, the action does nothing.
class TSRFlowFollower {
public:
    virtual ~TSRFlowFollower() = default;
    // `button` is the pressed flow button (locked while the step is sent).
    virtual void followFlow(QWidget* button, const std::optional<QString>& directionId,
                            const std::optional<QString>& fromFlowFieldId) = 0;
};

} // namespace tessara
