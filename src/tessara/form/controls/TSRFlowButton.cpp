#include "tessara/form/controls/TSRFlowButton.h"

#include "tessara/documents/SpecialType.h"
#include "tessara/ui/ButtonAppearance.h"
#include "tessara/form/ParentResponders.h"
#include "tessara/form/TSRFlowFollower.h"
#include "tessara/form/TSRPopupOpener.h"

namespace tessara {

TSRFlowButton::TSRFlowButton(QWidget* parent)
    : BusyButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TSRFlowButton::setup() {
    applyAccessibilityIdentifier();
    setText(field->label.value_or(QStringLiteral("MISSING_BUTTON_TITLE")));
    ButtonAppearance::apply(this);
    opensPopup_ = field->specialType == rawValue(SpecialType::popup);
    if (opensPopup_)
        connect(this, &QPushButton::clicked, this, &TSRFlowButton::popupAction);
    else
        connect(this, &QPushButton::clicked, this, &TSRFlowButton::flowAction);
}

void TSRFlowButton::flowAction() {
    if (!field || !field->key)
        return;
    if (TSRFlowFollower* follower = firstResponder<TSRFlowFollower>(this))
        follower->followFlow(this, field->directionId, field->key);
}

void TSRFlowButton::popupAction() {
    if (!field)
        return;
    if (TSRPopupOpener* opener = firstResponder<TSRPopupOpener>(this))
        opener->openPopup(*field);
}

} // namespace tessara
