#include "tessara/ui/InputShield.h"

#include "tessara/ui/BusyButton.h"

#include <QEvent>

namespace tessara {

InputShield::InputShield(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("InputShield"));
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::StrongFocus);
    parent->installEventFilter(this);
    hide();
}

void InputShield::engage(QWidget* pressed) {
    engaged_ = true;
    pressed_ = pressed;
    setPressedBusy(true);
    setGeometry(parentWidget()->rect());
    show();
    raise();
    setFocus(Qt::OtherFocusReason);
}

void InputShield::release() {
    engaged_ = false;
    hide();
    setPressedBusy(false);
    pressed_ = nullptr;
}

void InputShield::setPressedBusy(bool busy) {
    if (!pressed_)
        return;
    pressed_->setEnabled(!busy);
    if (auto* button = qobject_cast<BusyButton*>(pressed_))
        button->setShowsActivityIndicator(busy);
}

bool InputShield::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

bool InputShield::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize && engaged_)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

bool InputShield::focusNextPrevChild(bool) {
    return true; // Tab must not walk the focus back into the locked form
}

} // namespace tessara
