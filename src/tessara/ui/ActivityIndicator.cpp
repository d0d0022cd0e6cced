#include "tessara/ui/ActivityIndicator.h"

#include <QPainter>

namespace tessara {

namespace {
constexpr int kSpokes = 12;
constexpr int kFrameMs = 80;
} // namespace

ActivityIndicator::ActivityIndicator(Style style, QWidget* parent)
    : QWidget(parent)
    , style_(style) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&timer_, &QTimer::timeout, this, [this] {
        phase_ = (phase_ + 1) % kSpokes;
        update();
    });
    if (hidesWhenStopped_)
        hide();
}

void ActivityIndicator::setColor(const QColor& color) {
    color_ = color;
    update();
}

void ActivityIndicator::setHidesWhenStopped(bool hides) {
    hidesWhenStopped_ = hides;
    if (hides && !isAnimating())
        hide();
}

void ActivityIndicator::startAnimating() {
    if (!timer_.isActive())
        timer_.start(kFrameMs);
    show();
}

void ActivityIndicator::stopAnimating() {
    timer_.stop();
    if (hidesWhenStopped_)
        hide();
}

QSize ActivityIndicator::sizeHint() const {
    return style_ == Style::large ? QSize(37, 37) : QSize(20, 20);
}

void ActivityIndicator::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height());
    p.translate(width() / 2.0, height() / 2.0);
    const qreal outer = side / 2.0;
    const qreal inner = outer * 0.45;
    QPen pen(color_);
    pen.setWidthF(qMax(2.0, side / 11.0));
    pen.setCapStyle(Qt::RoundCap);
    for (int i = 0; i < kSpokes; ++i) {
        // The spoke at the current phase is the brightest; the trail fades behind it.
        const int age = (phase_ - i + kSpokes) % kSpokes;
        QColor c = color_;
        c.setAlphaF(color_.alphaF() * (1.0 - 0.75 * age / double(kSpokes - 1)));
        pen.setColor(c);
        p.setPen(pen);
        p.save();
        p.rotate(i * 360.0 / kSpokes);
        p.drawLine(QPointF(0, -inner), QPointF(0, -outer + pen.widthF()));
        p.restore();
    }
}

} // namespace tessara
