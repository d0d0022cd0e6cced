#include "host/UserGestures.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QMenu>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

namespace tessara::demo {

namespace {
constexpr int kMenuWaitMs = 2000;
constexpr int kScrollMargin = 48;
} // namespace

void UserGestures::click(QAbstractButton* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

bool UserGestures::clickUntil(QAbstractButton* button, const std::function<bool()>& changed) {
    const QPoint points[] = {button->rect().center(),
                             QPoint(std::min(16, button->width() / 2), button->height() / 2),
                             QPoint(std::min(16, button->width() / 2), std::min(16, button->height() / 2))};
    for (const QPoint& point : points) {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, point);
        if (changed())
            return true;
    }
    return false;
}

void UserGestures::typeText(QWidget* widget, const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        QString unit(text.at(i));
        // A character outside the basic plane travels as its two halves in one event.
        if (text.at(i).isHighSurrogate() && i + 1 < text.size())
            unit.append(text.at(++i));
        if (unit == QLatin1String("\n")) {
            QTest::keyClick(widget, Qt::Key_Return);
            continue;
        }
        const QChar upper = unit.at(0).toUpper();
        const auto key = upper.unicode() < 0x80 ? Qt::Key(upper.unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Click, widget, key, unit, Qt::NoModifier);
    }
}

void UserGestures::clearText(QWidget* widget) {
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_Backspace);
}

UserGestures::MenuOutcome UserGestures::pickFromMenu(QAbstractButton* opener,
                                                     const std::function<bool(QAction*)>& wanted) {
    MenuOutcome outcome = MenuOutcome::noMenu;
    QTimer chooser;
    chooser.setInterval(10);
    QObject::connect(&chooser, &QTimer::timeout, &chooser, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        chooser.stop();
        outcome = MenuOutcome::noItem;
        for (QAction* action : menu->actions()) {
            if (!wanted(action))
                continue;
            outcome = MenuOutcome::picked;
            QPointer<QMenu> guard(menu);
            bool triggered = false;
            const QMetaObject::Connection seen =
                QObject::connect(action, &QAction::triggered, [&triggered] { triggered = true; });
            const QRect geometry = menu->actionGeometry(action);
            if (geometry.isValid())
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, geometry.center());
            QObject::disconnect(seen);
            // A click may miss offscreen (a scrolled or unplaced menu); the item is then
            // chosen as a keyboard user would choose it.
            if (!triggered)
                action->trigger();
            if (guard && guard->isVisible())
                guard->close();
            return;
        }
        menu->close();
    });
    chooser.start();
    click(opener);
    waitFor([&] { return !chooser.isActive(); }, kMenuWaitMs);
    chooser.stop();
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
        menu->close();
    return outcome;
}

void UserGestures::scrollIntoView(QWidget* widget) {
    for (QWidget* w = widget ? widget->parentWidget() : nullptr; w; w = w->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(w)) {
            area->ensureWidgetVisible(widget, 0, kScrollMargin);
            return;
        }
    }
}

bool UserGestures::waitFor(const std::function<bool()>& done, int milliseconds) {
    QDeadlineTimer deadline(milliseconds);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

} // namespace tessara::demo
