#pragma once

#include "tessara/form/TSRControl.h"
#include "tessara/ui/BusyButton.h"

namespace tessara {

// A button that moves the process on (FLOW): it asks the screen (TSRFlowFollower) to follow
// the field's direction, or, for the special type "POPUP", to show the field's popup
// (TSRPopupOpener). The screen shows the spinner while the step is sent.
class TSRFlowButton : public BusyButton, public TSRControl {
    Q_OBJECT
    // Read-only, for hosts that drive the screens through QObject::property: the step the
    // button leads to (empty when none) and whether it shows a popup instead.
    Q_PROPERTY(QString directionId READ directionIdText)
    Q_PROPERTY(bool opensPopup READ opensPopup)
public:
    explicit TSRFlowButton(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }

    // True when a click shows the popup instead of following the flow.
    bool opensPopup() const { return opensPopup_; }
    QString directionIdText() const { return field ? field->directionId.value_or(QString()) : QString(); }

private:
    void flowAction();
    void popupAction();

    bool opensPopup_ = false;
};

} // namespace tessara
