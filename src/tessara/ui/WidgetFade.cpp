#include "tessara/ui/WidgetFade.h"

#include <QGraphicsOpacityEffect>
#include <QPointer>
#include <QPropertyAnimation>
#include <QTimer>
#include <QWidget>

namespace tessara {

namespace {

const QString kFadeAnimationName = QStringLiteral("tessara.fade");

// Opacity effects do not nest well: a child drawn through its own effect inside a parent
// that is itself fading paints wrongly. The outer fade already covers the child.
bool ancestorIsFading(const QWidget* widget) {
    for (const QWidget* p = widget->parentWidget(); p; p = p->parentWidget()) {
        if (qobject_cast<QGraphicsOpacityEffect*>(p->graphicsEffect()))
            return true;
    }
    return false;
}

// A new fade takes over from a running one, from the opacity that one reached.
void stopRunningFade(QWidget* widget) {
    const auto running = widget->findChildren<QObject*>(kFadeAnimationName, Qt::FindDirectChildrenOnly);
    for (QObject* fade : running) {
        fade->setObjectName(QString());
        if (auto* animation = qobject_cast<QAbstractAnimation*>(fade)) {
            animation->stop(); // deletes itself
        } else if (auto* timer = qobject_cast<QTimer*>(fade)) {
            timer->stop();
            timer->deleteLater();
        }
    }
}

// The opacity the widget shows now: its effect's value, else full when visible.
qreal currentOpacity(const QWidget* widget) {
    if (auto* effect = qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect()))
        return effect->opacity();
    return widget->isVisible() ? 1.0 : 0.0;
}

// Animates the widget's opacity effect to `to` and calls `done` when it got there (not when
// a later fade interrupted it). Returns false when the widget carries a graphics effect of
// another kind, which an opacity effect would replace.
bool animateOpacity(QWidget* widget, qreal from, qreal to, std::function<void()> done) {
    auto* effect = qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect());
    if (!effect) {
        if (widget->graphicsEffect())
            return false;
        effect = new QGraphicsOpacityEffect; // owned by the widget from the next line on
        widget->setGraphicsEffect(effect);
    }
    effect->setOpacity(from);
    // Parented to the widget, not the effect, so `done` may remove the effect safely.
    auto* animation = new QPropertyAnimation(effect, "opacity", widget);
    animation->setObjectName(kFadeAnimationName);
    animation->setDuration(kFadeDurationMs);
    animation->setStartValue(from);
    animation->setEndValue(to);
    QObject::connect(animation, &QPropertyAnimation::finished, widget, std::move(done));
    animation->start(QAbstractAnimation::DeleteWhenStopped);
    return true;
}

// Drawing through an effect costs an offscreen pass; a widget at rest goes without one.
void removeOpacityEffect(QWidget* widget) {
    if (qobject_cast<QGraphicsOpacityEffect*>(widget->graphicsEffect()))
        widget->setGraphicsEffect(nullptr);
}

} // namespace

void fadeIn(QWidget* widget) {
    if (!widget)
        return;
    stopRunningFade(widget);
    const qreal from = currentOpacity(widget);
    if (from >= 1.0 || ancestorIsFading(widget)) {
        removeOpacityEffect(widget);
        widget->show();
        return;
    }
    QPointer<QWidget> guard(widget);
    // A widget that carries another kind of effect simply appears.
    animateOpacity(widget, from, 1.0, [guard] {
        if (guard)
            removeOpacityEffect(guard);
    });
    widget->show();
}

void fadeOut(QWidget* widget, std::function<void()> finished) {
    if (!widget)
        return;
    stopRunningFade(widget);
    QPointer<QWidget> guard(widget);
    auto hideAndReport = [guard, finished = std::move(finished)] {
        if (!guard)
            return;
        guard->hide();
        removeOpacityEffect(guard);
        if (finished)
            finished();
    };
    if (!ancestorIsFading(widget) && animateOpacity(widget, currentOpacity(widget), 0.0, hideAndReport))
        return;
    // No effect of our own: keep the timing, so the widget still leaves after the fade.
    auto* timer = new QTimer(widget);
    timer->setObjectName(kFadeAnimationName);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, widget, [timer, hideAndReport] {
        timer->deleteLater();
        hideAndReport();
    });
    timer->start(kFadeDurationMs);
}

} // namespace tessara
