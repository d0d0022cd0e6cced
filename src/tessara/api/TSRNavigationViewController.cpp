#include "tessara/api/TSRNavigationViewController.h"

#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRViewController.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/WidgetFade.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>

namespace tessara {

namespace {

// The screen background follows the theme unless a light or dark look is forced.
QPalette paletteForStyle(TSRNavigationViewController::InterfaceStyle style) {
    using Style = TSRNavigationViewController::InterfaceStyle;
    QPalette palette;
    if (style == Style::unspecified) {
        palette.setColor(QPalette::Window, currentAppearance().backgroundColor());
        return palette;
    }
    const bool dark = style == Style::dark;
    const QColor text = dark ? QColor(Qt::white) : QColor(Qt::black);
    palette =
        QPalette(dark ? QColor(0x3a, 0x3a, 0x3c) : QColor(0xe5, 0xe5, 0xea), dark ? Qt::black : Qt::white);
    palette.setColor(QPalette::Base, dark ? QColor(0x1c, 0x1c, 0x1e) : QColor(Qt::white));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    return palette;
}

} // namespace

TSRNavigationViewController::TSRNavigationViewController(
    std::unique_ptr<TSRViewController> rootViewController, QWidget* parent)
    : QWidget(parent)
    , bar_(new TSRNavigationBar(this))
    , content_(new QWidget(this)) {
    setObjectName(QStringLiteral("TSRNavigationViewController"));
    content_->setObjectName(QStringLiteral("TSRNavigationViewController.content"));
    setAutoFillBackground(true);
    applyStyle();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar_);
    layout->addWidget(content_, 1);
    contentLayout_ = new QVBoxLayout(content_);
    contentLayout_->setContentsMargins(0, 0, 0, 0);
    contentLayout_->setSpacing(0);

    if (rootViewController) {
        std::vector<std::unique_ptr<TSRViewController>> stack;
        stack.push_back(std::move(rootViewController));
        setViewControllers(std::move(stack), false);
    } else {
        refreshBar();
    }
}

TSRNavigationViewController::~TSRNavigationViewController() {
    // The screens are deleted as children after this body, when stack_ is gone already;
    // their destroyed() must not reach refreshBar() then.
    for (const QPointer<TSRViewController>& screen : stack_) {
        if (screen)
            disconnect(screen, nullptr, this, nullptr);
    }
}

void TSRNavigationViewController::setViewControllers(
    std::vector<std::unique_ptr<TSRViewController>> viewControllers, bool animated) {
    const std::vector<QPointer<TSRViewController>> leaving = std::move(stack_);
    stack_.clear();
    for (auto& owned : viewControllers) {
        if (!owned)
            continue;
        TSRViewController* screen = owned.release(); // owned by content_ from the next line on
        screen->setParent(content_);
        screen->hide();
        connect(screen, &TSRViewController::navigationItemChanged, this,
                &TSRNavigationViewController::refreshBar);
        connect(screen, &QObject::destroyed, this, &TSRNavigationViewController::refreshBar);
        stack_.emplace_back(screen);
    }

    for (const QPointer<TSRViewController>& old : leaving) {
        if (!old || std::find(stack_.begin(), stack_.end(), old) != stack_.end())
            continue;
        contentLayout_->removeWidget(old);
        old->hide();
        disconnect(old, nullptr, this, nullptr);
        old->deleteLater();
    }

    if (TSRViewController* visible = visibleViewController()) {
        for (const QPointer<TSRViewController>& screen : stack_)
            contentLayout_->removeWidget(screen);
        contentLayout_->addWidget(visible);
        if (animated)
            fadeIn(visible);
        else
            visible->show();
    }
    refreshBar();
}

QList<TSRViewController*> TSRNavigationViewController::viewControllers() const {
    QList<TSRViewController*> screens;
    for (const QPointer<TSRViewController>& screen : stack_) {
        if (screen)
            screens.append(screen);
    }
    return screens;
}

TSRViewController* TSRNavigationViewController::visibleViewController() const {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if (*it)
            return *it;
    }
    return nullptr;
}

void TSRNavigationViewController::refreshBar() {
    TSRViewController* visible = visibleViewController();
    QWidget* item = visible ? visible->rightBarItem() : nullptr;
    if (barItem_ && barItem_ != item) {
        barItem_->hide();
        if (barScreen_)
            barItem_->setParent(barScreen_);
        else
            barItem_->deleteLater(); // its screen is gone, and it owned the item
    }
    bar_->setRightItem(item);
    bar_->setTitle(visible ? visible->navigationTitle() : QString());
    barScreen_ = visible;
    barItem_ = item;
}

void TSRNavigationViewController::setOverrideUserInterfaceStyle(InterfaceStyle style) {
    if (style == interfaceStyle_)
        return;
    interfaceStyle_ = style;
    applyStyle();
}

void TSRNavigationViewController::changeEvent(QEvent* event) {
    // The theme's default background depends on the application's light or dark palette.
    if (event->type() == QEvent::PaletteChange && !applyingStyle_ &&
        interfaceStyle_ == InterfaceStyle::unspecified)
        applyStyle();
    QWidget::changeEvent(event);
}

void TSRNavigationViewController::applyStyle() {
    const QScopedValueRollback guard(applyingStyle_, true);
    TSRAppearance::setInterfaceStyle(this, interfaceStyle_);
    setPalette(paletteForStyle(interfaceStyle_));
    bar_->restyle();
}

bool TSRNavigationViewController::shouldAutorotate() const {
    if (const TSRViewController* visible = visibleViewController())
        return visible->shouldAutorotate();
    return kDefaultShouldAutorotate;
}

Qt::ScreenOrientations TSRNavigationViewController::supportedInterfaceOrientations() const {
    if (const TSRViewController* visible = visibleViewController())
        return visible->supportedInterfaceOrientations();
    return kAllInterfaceOrientations;
}

Qt::ScreenOrientation TSRNavigationViewController::preferredInterfaceOrientationForPresentation() const {
    if (const TSRViewController* visible = visibleViewController())
        return visible->preferredInterfaceOrientationForPresentation();
    return kDefaultPreferredOrientation;
}

} // namespace tessara
