#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace tessara {

// Keeps a screen's scrolling content clear of the on-screen keyboard. When the keyboard
// starts to show, the bottom inset follows it once its animation is over (plus 50 ms);
// when it hides, the inset returns to zero at once. On a desktop no keyboard appears and
// nothing happens.
class KeyboardGuide : public QObject {
    Q_OBJECT
public:
    // The input method gives no animation length; this is the usual one of mobile keyboards.
    static constexpr int kAnimationMs = 250;
    static constexpr int kExtraDelayMs = 50;

    // `changed` receives the height, in `screen` coordinates, that the keyboard covers.
    KeyboardGuide(QWidget* screen, std::function<void(int bottomInset)> changed);

    // What the input method's visibility changes do; public for platforms that report the
    // keyboard themselves.
    void keyboardWillShow();
    void keyboardWillHide();

    int bottomInset() const { return bottomInset_; }

private:
    int coveredHeight() const;
    void setInset(int inset);

    QWidget* screen_;
    std::function<void(int)> changed_;
    int bottomInset_ = 0;
    int generation_ = 0; // a later hide cancels a pending show
};

} // namespace tessara
