#pragma once

#include <QScrollBar>

class QAbstractScrollArea;

namespace tessara {

// A slim scroll indicator that floats over the right edge of a scroll area instead of
// taking width from it, as on a phone. It mirrors the area's own (hidden) vertical bar
// and can still be dragged.
class OverlayScrollBar : public QScrollBar {
    Q_OBJECT
public:
    static constexpr int kWidth = 6;

    // A child of `overlayParent`, which must contain `area`.
    OverlayScrollBar(QAbstractScrollArea* area, QWidget* overlayParent);

    // Places the bar along the right edge of the area (in the parent's coordinates).
    void follow();

private:
    QAbstractScrollArea* area_;
};

} // namespace tessara
