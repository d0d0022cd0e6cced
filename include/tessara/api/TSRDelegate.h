#pragma once

#include <QString>

namespace tessara {

/// The host's delegate. The object passed to Tessara::startProcess/openStep must ALSO be a
/// QWidget: the SDK places its screens over that widget. A delegate that is not a QWidget
/// ends the program at the start call.
class TSRDelegate {
public:
    virtual ~TSRDelegate() = default;

    /// Called on the main thread after the user confirmed closing a step screen; the screen
    /// is already being dismissed. `directionId` is the id of the step that was on screen.
    virtual void closedFormOnStepWithId(const QString& directionId) = 0;
};

} // namespace tessara
