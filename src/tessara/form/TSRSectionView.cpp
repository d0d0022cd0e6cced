#include "tessara/form/TSRSectionView.h"

#include "tessara/form/TSRControlFactory.h"
#include "tessara/form/VisibilityRule.h"
#include "tessara/platform/NotificationBus.h"

#include <QVBoxLayout>

namespace tessara {

TSRSectionView::TSRSectionView(QWidget* parent)
    : QWidget(parent) {}

TSRSectionView::~TSRSectionView() {
    // The bus only lets go of this object in ~QObject; a child destroyed before that (in
    // ~QWidget) could still post to it and reach a half-destroyed section.
    NotificationBus::instance().unsubscribe(this);
}

std::optional<FieldJSON> TSRSectionView::findGroup(const FieldJSON& section) {
    if (!section.fields)
        return std::nullopt;
    for (const FieldJSON& child : *section.fields) {
        if (child.type == FieldType::group && child.condition && child.condition->sectionKey == section.key)
            return child;
    }
    return std::nullopt;
}

void TSRSectionView::setup() {
    applyAccessibilityIdentifier();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);

    formFields = TSRControlFactory::makeControls(field->fields.value_or(std::vector<FieldJSON>{}), this);
    // Every child goes into the section, whatever its position style says.
    for (TSRControl* child : formFields)
        layout->addWidget(child->widget());

    // A rule without a watched key can never be announced, so it needs no subscription.
    if (group && group->condition && group->condition->fieldKey) {
        NotificationBus::instance().subscribe(
            NotificationBus::frameworkName(*group->condition->fieldKey), this,
            [this](const QVariantMap& userInfo) { handleNotification(userInfo); });
    }
}

bool TSRSectionView::hasValue() const {
    for (TSRControl* child : formFields) {
        if (auto* input = dynamic_cast<TSRValidateable*>(child); input && input->hasValue())
            return true;
    }
    return false;
}

std::optional<ControlValidationError> TSRSectionView::validate(bool) {
    return std::nullopt;
}

void TSRSectionView::handleNotification(const QVariantMap& userInfo) {
    const auto& condition = group ? group->condition : std::nullopt;
    setHidden(VisibilityRule::hiddenAfterAnnouncement(condition, userInfo));
}

} // namespace tessara
