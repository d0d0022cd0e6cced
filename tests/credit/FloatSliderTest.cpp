#include "tessara/credit/FloatSlider.h"

#include <QSignalSpy>
#include <cmath>
#include <gtest/gtest.h>

namespace tessara::test {
namespace {

TEST(FloatSlider, WritesAreClampedAndReadBack) {
    FloatSlider slider;
    slider.setBounds(1050.0f, 30000.0f);
    struct Case {
        float written;
        float read;
    };
    for (const Case& c :
         {Case{500.0f, 1050.0f}, Case{40000.0f, 30000.0f}, Case{2750.0f, 2750.0f}, Case{NAN, 1050.0f}}) {
        SCOPED_TRACE(c.written);
        slider.setValue(c.written);
        EXPECT_EQ(slider.value(), c.read);
    }
}

TEST(FloatSlider, EveryWholeUnitIsAPositionAndTheLastIsTheMaximum) {
    FloatSlider slider;
    slider.setBounds(12.0f, 24.0f);
    QSignalSpy changes(&slider, &FloatSlider::floatValueChanged);
    QSignalSpy released(&slider, &FloatSlider::released);
    EXPECT_EQ(slider.maximum() - slider.minimum(), 12);

    slider.setSliderDown(true);
    slider.setSliderPosition(3);
    EXPECT_EQ(slider.value(), 15.0f);
    EXPECT_EQ(released.count(), 0);
    slider.setSliderDown(false);
    EXPECT_EQ(released.count(), 1);

    // A change that is no drag ends at once.
    slider.triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(slider.value(), 24.0f);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(released.count(), 2);

    // A span that is no whole number of units still ends on the maximum.
    slider.setBounds(0.0f, 2.5f);
    slider.setValue(0.0f);
    slider.triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(slider.value(), 2.5f);
    // Writing moves the knob without telling anyone.
    slider.setValue(1.0f);
    EXPECT_EQ(slider.sliderPosition(), 1);
    EXPECT_EQ(changes.count(), 3);
}

} // namespace
} // namespace tessara::test
