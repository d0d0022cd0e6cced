#pragma once

#include <QWidget>

namespace tessara::demo {

// The dark rounded bezel around the phone-sized host screen in the demo window.
class PhoneFrame : public QWidget {
    Q_OBJECT
public:
    static constexpr int kBezel = 12;

    // Takes `screen` as its only child, at its fixed size.
    explicit PhoneFrame(QWidget* screen, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessara::demo
