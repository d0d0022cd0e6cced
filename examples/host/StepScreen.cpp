#include "host/StepScreen.h"

#include <QVariant>

namespace tessara::demo {

namespace {
const QString kRootName = QStringLiteral("TSRRootController");
const QString kContentName = QStringLiteral("TSRNavigationViewController.content");
const QString kShieldName = QStringLiteral("InputShield");
} // namespace

StepScreen::StepScreen(QWidget* widget)
    : widget_(widget) {}

StepScreen StepScreen::visibleIn(QWidget* host) {
    if (!host)
        return {};
    // Each start puts a new root over the host; the newest one that is shown is the one in use.
    const auto roots = host->findChildren<QWidget*>(kRootName, Qt::FindDirectChildrenOnly);
    for (auto it = roots.rbegin(); it != roots.rend(); ++it) {
        QWidget* root = *it;
        if (!root->isVisible())
            continue;
        auto* content = root->findChild<QWidget*>(kContentName);
        if (!content)
            continue;
        // Screens that left are hidden until deleted; the one on top is not.
        const auto screens = content->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        for (auto screen = screens.rbegin(); screen != screens.rend(); ++screen) {
            if (!(*screen)->isHidden() && (*screen)->property("stepType").isValid())
                return StepScreen(*screen);
        }
    }
    return {};
}

void StepScreen::withdrawAll(QWidget* host) {
    if (!host)
        return;
    for (QWidget* root : host->findChildren<QWidget*>(kRootName, Qt::FindDirectChildrenOnly))
        delete root;
}

QString StepScreen::kind() const {
    return widget_ ? widget_->objectName() : QString();
}

QString StepScreen::text(const char* property) const {
    return widget_ ? widget_->property(property).toString() : QString();
}

QString StepScreen::directionId() const {
    return text("directionId");
}

QString StepScreen::type() const {
    return text("stepType");
}

QString StepScreen::submissionId() const {
    return text("submissionId");
}

QString StepScreen::previousDirectionId() const {
    return text("previousDirectionId");
}

bool StepScreen::isLocked() const {
    const QWidget* shield = widget_ ? widget_->findChild<QWidget*>(kShieldName) : nullptr;
    return shield && shield->isVisibleTo(widget_);
}

} // namespace tessara::demo
