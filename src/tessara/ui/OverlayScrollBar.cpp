#include "tessara/ui/OverlayScrollBar.h"

#include <QAbstractScrollArea>

namespace tessara {

OverlayScrollBar::OverlayScrollBar(QAbstractScrollArea* area, QWidget* overlayParent)
    : QScrollBar(Qt::Vertical, overlayParent)
    , area_(area) {
    setObjectName(QStringLiteral("OverlayScrollBar"));
    setAttribute(Qt::WA_TranslucentBackground);
    setCursor(Qt::ArrowCursor);
    setStyleSheet(QStringLiteral(
        "QScrollBar:vertical{background:transparent;width:6px;margin:3px 2px 3px 0;}"
        "QScrollBar::handle:vertical{background:rgba(128,128,128,120);border-radius:2px;min-height:36px;}"
        "QScrollBar::add-line,QScrollBar::sub-line{height:0;}"
        "QScrollBar::add-page,QScrollBar::sub-page{background:transparent;}"));

    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScrollBar* inner = area->verticalScrollBar();
    connect(inner, &QScrollBar::rangeChanged, this, [this](int min, int max) {
        setRange(min, max);
        setVisible(max > min);
    });
    connect(inner, &QScrollBar::valueChanged, this, &QScrollBar::setValue);
    connect(this, &QScrollBar::valueChanged, inner, &QScrollBar::setValue);
    setPageStep(inner->pageStep());
    connect(inner, &QScrollBar::rangeChanged, this, [this, inner] { setPageStep(inner->pageStep()); });
    setRange(inner->minimum(), inner->maximum());
    setVisible(inner->maximum() > inner->minimum());
}

void OverlayScrollBar::follow() {
    const QRect area = area_->geometry();
    setGeometry(area.right() + 1 - kWidth, area.top(), kWidth, area.height());
    raise();
}

} // namespace tessara
