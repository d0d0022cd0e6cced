#pragma once

#include "tessara/appearance/TSRAppearance.h"

#include <QObject>

class QPushButton;

namespace tessara {

// The look of the SDK's main buttons (flow buttons, the closing screen's button, the
// continue buttons): title font and colour, size, corner style or radius and the minimum
// height, all from the theme. A tinted background in the theme's tint colour carries the
// title; pressed, disabled and focused states are drawn too.
class ButtonAppearance : public QObject {
    Q_OBJECT
public:
    // Styles `button` from the current theme. The appearance is a child of `button`.
    static ButtonAppearance* apply(QPushButton* button);

    // The height a button of `size` is laid out with (before the theme's minimum height).
    static int heightFor(TSRAppearance::ButtonSize size);
    // The corner radius for a button of `height`: buttonCornerRadius when set, else the
    // corner style's radius (capsule = half the height).
    static double cornerRadiusFor(TSRAppearance::ButtonCornerStyle style, double buttonCornerRadius,
                                  TSRAppearance::ButtonSize size, double height);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit ButtonAppearance(QPushButton* button);
    void readTheme();
    void applyStyleSheet();

    QPushButton* button_;
    TSRAppearance::ButtonSize size_ = TSRAppearance::ButtonSize::medium;
    TSRAppearance::ButtonCornerStyle cornerStyle_ = TSRAppearance::ButtonCornerStyle::dynamic;
    double cornerRadius_ = 0.0; // NaN: the corner style decides
    QColor tint_;
    QColor textColor_;
};

} // namespace tessara
