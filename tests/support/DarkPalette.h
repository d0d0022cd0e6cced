#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>

namespace tessara::test {

// Switches the application to a dark palette (white text on `window`) while it lives and
// restores the palette it found, so a failing test cannot leave later ones in the dark.
class DarkPalette {
public:
    explicit DarkPalette(const QColor& window = QColor(0x1c, 0x1c, 0x1e))
        : saved_(QApplication::palette()) {
        QPalette dark(QColor(0x3a, 0x3a, 0x3c), window);
        dark.setColor(QPalette::Window, window);
        dark.setColor(QPalette::WindowText, Qt::white);
        QApplication::setPalette(dark);
    }
    ~DarkPalette() { QApplication::setPalette(saved_); }
    DarkPalette(const DarkPalette&) = delete;
    DarkPalette& operator=(const DarkPalette&) = delete;

private:
    QPalette saved_;
};

} // namespace tessara::test
