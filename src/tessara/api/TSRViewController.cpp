#include "tessara/api/TSRViewController.h"

#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/Logging.h"
#include "tessara/steps/StepRouter.h"
#include "tessara/ui/WidgetFade.h"

namespace tessara {

TSRViewController::TSRViewController(QWidget* parent)
    : QWidget(parent) {}

TSRViewController::~TSRViewController() {
    // The bar may be holding the item while this screen goes away; the screen owns it.
    if (rightBarItem_ && rightBarItem_->parentWidget() != this)
        rightBarItem_->deleteLater();
}

TSRDelegate* TSRViewController::formDelegate() const {
    if (delegateIsQObject_ && !delegateObject_)
        return nullptr;
    return delegate_;
}

void TSRViewController::setFormDelegate(TSRDelegate* delegate) {
    delegate_ = delegate;
    QObject* object = dynamic_cast<QObject*>(delegate);
    delegateIsQObject_ = object != nullptr;
    delegateObject_ = object;
}

std::unique_ptr<TSRViewController> TSRViewController::makeStepController(const SubmissionJSON& document) {
    if (!document.type)
        fatalError(QStringLiteral("Form type is nil."));
    std::unique_ptr<TSRViewController> screen = StepRouter::makeScreen(document);
    screen->ui = document;
    screen->setFormDelegate(formDelegate());
    screen->previousDirectionId = ui ? ui->directionId : std::nullopt;
    return screen;
}

void TSRViewController::transitionToStep(const SubmissionJSON& document) {
    std::unique_ptr<TSRViewController> next = makeStepController(document);
    TSRNavigationViewController* navigation = navigationController();
    if (!navigation) {
        // Only a screen inside a navigation screen can be replaced; the new one is dropped.
        qCCritical(lcTessara) << "A step arrived for a screen that is not shown in a navigation screen.";
        return;
    }
    navigation->setOverrideUserInterfaceStyle(TSRNavigationViewController::InterfaceStyle::unspecified);
    std::vector<std::unique_ptr<TSRViewController>> stack;
    stack.push_back(std::move(next));
    navigation->setViewControllers(std::move(stack), true);
}

TSRNavigationViewController* TSRViewController::navigationController() const {
    // A screen belongs to the nearest navigation screen above it only while the screen (or
    // the screen it is nested in) is still in that navigation screen's stack.
    const QWidget* below = this;
    for (QWidget* w = parentWidget(); w; w = w->parentWidget()) {
        if (auto* navigation = qobject_cast<TSRNavigationViewController*>(w)) {
            for (TSRViewController* screen : navigation->viewControllers()) {
                if (screen == below)
                    return navigation;
            }
            return nullptr;
        }
        if (qobject_cast<TSRViewController*>(w))
            below = w;
    }
    return nullptr;
}

void TSRViewController::setNavigationTitle(const QString& title) {
    if (title == navigationTitle_)
        return;
    navigationTitle_ = title;
    Q_EMIT navigationItemChanged();
}

void TSRViewController::setRightBarItem(QWidget* item) {
    if (item == rightBarItem_)
        return;
    if (rightBarItem_)
        rightBarItem_->deleteLater();
    rightBarItem_ = item;
    if (item) {
        item->hide();
        item->setParent(this);
    }
    Q_EMIT navigationItemChanged();
}

void TSRViewController::dismissAndReportClose() {
    TSRDelegate* delegate = formDelegate();
    if (delegate && (!ui || !ui->directionId))
        fatalError(QStringLiteral("The closed step has no directionId to report."));

    // The root that presents this screen leaves with it; a screen shown without a root (a
    // host that embeds screens itself) takes its navigation screen along.
    TSRRootController* root = nullptr;
    for (QWidget* w = this; w && !root; w = w->parentWidget())
        root = qobject_cast<TSRRootController*>(w);
    if (root) {
        root->dismiss();
    } else {
        QWidget* presented = navigationController() ? static_cast<QWidget*>(navigationController()) : this;
        QPointer<QWidget> guard(presented);
        fadeOut(presented, [guard] {
            if (guard)
                guard->deleteLater();
        });
    }

    if (delegate)
        delegate->closedFormOnStepWithId(*ui->directionId);
}

} // namespace tessara
