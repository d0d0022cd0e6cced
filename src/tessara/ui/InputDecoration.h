#pragma once

#include "tessara/appearance/TSRAppearance.h"

#include <QColor>
#include <QObject>

class QWidget;

namespace tessara {

// The frame of the text inputs (line edits, text areas, dropdowns): background, border and
// corners painted behind the input from the theme. With the border style `none` the theme's
// corner radius (0 = half the height), border colour and width and input background are
// used; the other styles get a platform-like frame. The colours are read again when the
// palette or style changes, because the default border colour depends on the dark style.
class InputDecoration : public QObject {
    Q_OBJECT
public:
    // Decorates `input` (a QLineEdit, a QPlainTextEdit or any widget) from the current
    // theme. Calling it again re-reads the theme. The decoration is a child of `input`.
    static InputDecoration* apply(QWidget* input);
    // The text look every input shares: the theme's input font and text colour, the
    // placeholder colour and the tint as selection colour.
    static void applyTextStyle(QWidget* input);
    // The decoration installed on `input`, or nullptr.
    static InputDecoration* of(const QWidget* input);

    QColor borderColor() const { return borderColor_; }
    double borderWidth() const { return borderWidth_; }
    QColor backgroundColor() const { return backgroundColor_; }
    // The radius drawn at the input's current height.
    double cornerRadius() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit InputDecoration(QWidget* input);
    void readTheme();
    void paint();

    QWidget* input_;
    TSRAppearance::InputBorderStyle borderStyle_ = TSRAppearance::InputBorderStyle::roundedRect;
    double themeRadius_ = 8.0;
    double borderWidth_ = 0.0;
    QColor borderColor_;
    QColor backgroundColor_;
    QColor focusColor_;
    bool isTextArea_ = false;
};

} // namespace tessara
