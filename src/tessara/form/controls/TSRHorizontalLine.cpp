#include "tessara/form/controls/TSRHorizontalLine.h"

#include "tessara/appearance/TSRAppearance.h"
#include "tessara/ui/Hairline.h"

#include <QPainter>
#include <cmath>

namespace tessara {

TSRHorizontalLine::TSRHorizontalLine(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TSRHorizontalLine::setup() {
    applyAccessibilityIdentifier();
    // Layouts place widgets on whole logical pixels; the line inside is one physical pixel.
    setFixedHeight(int(std::ceil(hairlineWidth(this))));
}

QSize TSRHorizontalLine::sizeHint() const {
    return {40, int(std::ceil(hairlineWidth(this)))};
}

void TSRHorizontalLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRectF(0, 0, width(), hairlineWidth(this)), TSRAppearance::separatorColor());
}

} // namespace tessara
