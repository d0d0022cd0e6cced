#pragma once

#include <functional>

class QWidget;

namespace tessara {

// Shows `widget` and brings its opacity to 1 over 0.2 s. A widget that is already fully
// visible does not flicker: the fade starts from where the widget is. Main thread.
void fadeIn(QWidget* widget);

// Brings the opacity of `widget` to 0 over 0.2 s, then hides it and calls `finished`
// (if given) on the main thread. Main thread.
void fadeOut(QWidget* widget, std::function<void()> finished = {});

// Length of both fades, in milliseconds.
inline constexpr int kFadeDurationMs = 200;

} // namespace tessara
