#include "tessara/api/TSRRootController.h"

#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/ui/WidgetFade.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/ActivityIndicator.h"

#include <QEvent>
#include <QScopedValueRollback>

namespace tessara {

TSRRootController::TSRRootController(QWidget* parent)
    : TSRViewController(parent)
    , loader_(new ActivityIndicator(ActivityIndicator::Style::large, this)) {
    setObjectName(QStringLiteral("TSRRootController"));
    loader_->setObjectName(QStringLiteral("TSRRootController.loader"));

    setAutoFillBackground(true);
    applyTheme();
    loader_->setHidesWhenStopped(true);
    loader_->startAnimating();
    placeLoader();
}

TSRRootController::~TSRRootController() {
    if (host_)
        host_->removeEventFilter(this);
}

void TSRRootController::presentOver(QWidget* host) {
    if (host_)
        host_->removeEventFilter(this);
    host_ = host;
    setParent(host);
    setGeometry(host->rect());
    host->installEventFilter(this);
    raise();
    fadeIn(this);
}

void TSRRootController::presentStep(std::unique_ptr<TSRNavigationViewController> navigation) {
    TSRNavigationViewController* incoming = navigation.release(); // owned by this root from the next line on
    incoming->setParent(this);
    if (child_) {
        // Only one navigation screen at a time: the old one leaves the root now and is
        // deleted once control returns to the event loop (the call may come from inside it).
        TSRNavigationViewController* old = child_;
        old->hide();
        old->setParent(nullptr);
        old->deleteLater();
    } else {
        loader_->stopAnimating();
    }
    child_ = incoming;
    incoming->hide();
    incoming->setGeometry(rect());
    fadeIn(incoming);
}

void TSRRootController::dismiss() {
    if (dismissing_)
        return;
    dismissing_ = true;
    QPointer<TSRRootController> self(this);
    fadeOut(this, [self] {
        if (self)
            self->deleteLater();
    });
}

void TSRRootController::resizeEvent(QResizeEvent* event) {
    TSRViewController::resizeEvent(event);
    placeLoader();
    if (child_)
        child_->setGeometry(rect());
}

bool TSRRootController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == host_ && event->type() == QEvent::Resize)
        setGeometry(host_->rect());
    return TSRViewController::eventFilter(watched, event);
}

void TSRRootController::applyTheme() {
    const QScopedValueRollback guard(applyingTheme_, true);
    TSRAppearance& theme = currentAppearance();
    QPalette background = palette();
    background.setColor(QPalette::Window, theme.backgroundColor());
    setPalette(background);
    loader_->setColor(theme.tintColor());
}

void TSRRootController::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && !applyingTheme_)
        applyTheme();
    TSRViewController::changeEvent(event);
}

void TSRRootController::placeLoader() {
    const QSize size = loader_->sizeHint();
    loader_->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

} // namespace tessara
