#pragma once

#include <QSlider>

namespace tessara {

// A horizontal slider whose value is a 32-bit float between a minimum and a maximum. A write
// is clamped to the bounds and is what a read gives back. The Qt slider underneath counts
// whole positions of `resolution` from the minimum (at most kMaxPositions of them, coarser
// beyond), so a drag or a key moves the value in those units. Main thread only.
//
// Signals: floatValueChanged for every change the user makes (never for setValue);
// QAbstractSlider::sliderReleased when a drag ends. A change that is no drag (a key, a click
// on the groove) is followed at once by `released`, so every user change ends in one.
class FloatSlider : public QSlider {
    Q_OBJECT
    // For hosts and test robots that drive the slider through QObject::property.
    Q_PROPERTY(float floatValue READ value)
    Q_PROPERTY(float floatMinimum READ minimumValue)
    Q_PROPERTY(float floatMaximum READ maximumValue)
public:
    static constexpr int kMaxPositions = 1000000;

    explicit FloatSlider(QWidget* parent = nullptr);

    float value() const { return value_; }
    // Clamps to the bounds (not-a-number goes to the minimum); emits nothing.
    void setValue(float value);

    float minimumValue() const { return minimum_; }
    float maximumValue() const { return maximum_; }
    // Sets both bounds (a maximum below the minimum is taken as the minimum) and clamps the
    // value into them.
    void setBounds(float minimum, float maximum);
    // The value one position of the Qt slider stands for (1 unless set).
    void setResolution(float unit);
    // The track in `tint`, the knob white, as on a phone.
    void applyTint(const QColor& tint);

Q_SIGNALS:
    void floatValueChanged(float value);
    // Every user change has ended: after a drag's release, or at once after a key or click.
    void released();

private:
    void onPositionChanged(int position);
    void placeHandle();
    float unit() const;

    float value_ = 0.0f;
    float minimum_ = 0.0f;
    float maximum_ = 1.0f;
    float resolution_ = 1.0f;
};

} // namespace tessara
