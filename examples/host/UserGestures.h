#pragma once

#include <QString>
#include <functional>

class QAbstractButton;
class QAction;
class QWidget;

namespace tessara::demo {

// What the autopilot's hands can do on any widget, through Qt's public API only: click, type,
// open a menu and pick an item, scroll a widget into view, wait for the event loop. Screen
// strategies are built from these. Main thread only.
class UserGestures {
public:
    UserGestures() = delete;

    static void click(QAbstractButton* button);
    // Clicks `button` at its centre first, then near its leading edge, where the glyph of a
    // checkbox or radio row sits, until `changed` reports the click took.
    static bool clickUntil(QAbstractButton* button, const std::function<bool()>& changed);

    // Types `text` key by key into `widget`; characters outside Latin-1 are sent as key events
    // carrying their text, which is all a text editor reads.
    static void typeText(QWidget* widget, const QString& text);
    // Selects everything in the focused editor and deletes it.
    static void clearText(QWidget* widget);

    enum class MenuOutcome { picked, noItem, noMenu };
    // Clicks `opener` and, in the menu that pops up, the first item `wanted` accepts (closing
    // the menu when none does). The pick is made from inside the event loop, so a menu opened
    // with exec() works as well as one opened with popup().
    static MenuOutcome pickFromMenu(QAbstractButton* opener, const std::function<bool(QAction*)>& wanted);

    // Scrolls the nearest scroll area around `widget` until it shows, with room below, as a
    // user scrolls before touching it.
    static void scrollIntoView(QWidget* widget);

    // Spins the event loop until `done` holds or `milliseconds` passed; false on time out.
    static bool waitFor(const std::function<bool()>& done, int milliseconds);
};

} // namespace tessara::demo
