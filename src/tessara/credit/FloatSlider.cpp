#include "tessara/credit/FloatSlider.h"

#include "tessara/ui/CssColor.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {
constexpr int kKnob = 28;
constexpr int kTrack = 4;
} // namespace

FloatSlider::FloatSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent) {
    setMinimumHeight(kKnob + 4);
    setPageStep(1);
    setSingleStep(1);
    connect(this, &QAbstractSlider::valueChanged, this, &FloatSlider::onPositionChanged);
    connect(this, &QAbstractSlider::sliderReleased, this, &FloatSlider::released);
    setBounds(0.0f, 1.0f);
}

void FloatSlider::applyTint(const QColor& tint) {
    setStyleSheet(QStringLiteral("QSlider{min-height:%1px;}"
                                 "QSlider::groove:horizontal{height:%2px;border-radius:%3px;"
                                 "background:rgba(120,120,128,0.2);}"
                                 "QSlider::sub-page:horizontal{height:%2px;border-radius:%3px;background:%4;}"
                                 "QSlider::handle:horizontal{width:%5px;height:%5px;margin:-%6px 0;"
                                 "border-radius:%7px;background:white;border:1px solid rgba(0,0,0,0.12);}")
                      .arg(kKnob + 4)
                      .arg(kTrack)
                      .arg(kTrack / 2)
                      .arg(cssColor(tint))
                      .arg(kKnob)
                      .arg((kKnob - kTrack) / 2 + 1)
                      .arg(kKnob / 2));
}

float FloatSlider::unit() const {
    const float span = maximum_ - minimum_;
    if (!(resolution_ > 0.0f) || !std::isfinite(span))
        return 1.0f;
    // Too many positions for the Qt slider: each one stands for a larger part of the span.
    if (span / resolution_ > float(kMaxPositions))
        return span / float(kMaxPositions);
    return resolution_;
}

void FloatSlider::setResolution(float unit) {
    resolution_ = unit;
    setBounds(minimum_, maximum_);
}

void FloatSlider::setBounds(float minimum, float maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    const float span = maximum_ - minimum_;
    const int positions = span > 0.0f ? int(std::ceil(span / unit())) : 0;
    blockSignals(true);
    setRange(0, positions);
    blockSignals(false);
    setValue(value_);
}

void FloatSlider::setValue(float value) {
    // No number lies nowhere on the track; it goes to the start, as a fresh slider's value.
    value_ = std::isnan(value) ? minimum_ : std::clamp(value, minimum_, maximum_);
    placeHandle();
}

void FloatSlider::placeHandle() {
    const long position = value_ >= maximum_ ? maximum() : std::lround((value_ - minimum_) / unit());
    blockSignals(true);
    QSlider::setValue(int(std::clamp<long>(position, minimum(), maximum())));
    blockSignals(false);
}

void FloatSlider::onPositionChanged(int position) {
    // The last position is the maximum itself, whatever the span's remainder.
    const float value = position >= maximum() ? maximum_ : minimum_ + float(position) * unit();
    value_ = std::clamp(value, minimum_, maximum_);
    Q_EMIT floatValueChanged(value_);
    if (!isSliderDown())
        Q_EMIT released();
}

} // namespace tessara
