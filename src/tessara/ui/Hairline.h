#pragma once

class QWidget;

namespace tessara {

// The width of the thinnest line a screen can show: one physical pixel, in logical
// pixels (1 / device pixel ratio of `widget`'s screen, or of the primary screen).
// Separators and the frame of text areas use it.
double hairlineWidth(const QWidget* widget = nullptr);

} // namespace tessara
