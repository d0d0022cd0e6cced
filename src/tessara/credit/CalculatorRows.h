#pragma once

#include <QString>
#include <Qt>

class QLabel;
class QWidget;

namespace tessara {

class ActivityIndicator;
class FloatSlider;

// The calculator's views in the theme's look: values in the tint colour at size 20, titles in
// the text colour, the rows that pair them. Views are named "TSRCreditCalculatorController."
// plus their role. Main thread only.
class CalculatorRows {
public:
    CalculatorRows() = default;

    // The spinner that stands in for rows while they load.
    static ActivityIndicator* spinner();

    QLabel* valueLabel(const QString& role, const QString& text, Qt::Alignment alignment);
    QLabel* titleLabel(const QString& text);
    FloatSlider* slider(const QString& role);
    // A value over its slider.
    QWidget* column(QLabel* value, FloatSlider* slider);
    // A title and its value on one line, the value taking the room that is left.
    QWidget* line(const QString& title, QLabel* value);
    // A title and the date button, the button as wide as its title.
    QWidget* dateLine(const QString& title, QWidget* button);
};

} // namespace tessara
