#include "tessara/ui/KeyboardGuide.h"

#include "tessara/platform/MainThread.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QWidget>

namespace tessara {

KeyboardGuide::KeyboardGuide(QWidget* screen, std::function<void(int)> changed)
    : QObject(screen)
    , screen_(screen)
    , changed_(std::move(changed)) {
    QInputMethod* im = QGuiApplication::inputMethod();
    connect(im, &QInputMethod::visibleChanged, this, [this, im] {
        if (im->isVisible())
            keyboardWillShow();
        else
            keyboardWillHide();
    });
}

void KeyboardGuide::keyboardWillShow() {
    const int generation = ++generation_;
    runOnMainAfter(kAnimationMs + kExtraDelayMs, this, [this, generation] {
        if (generation == generation_)
            setInset(coveredHeight());
    });
}

void KeyboardGuide::keyboardWillHide() {
    ++generation_;
    setInset(0);
}

int KeyboardGuide::coveredHeight() const {
    // The keyboard rises from the bottom of the window, where the screen ends too; its
    // rectangle is given in the focus item's coordinates, so only its height is reliable.
    const QRectF keyboard = QGuiApplication::inputMethod()->keyboardRectangle();
    return qBound(0, int(keyboard.height()), screen_->height());
}

void KeyboardGuide::setInset(int inset) {
    if (inset == bottomInset_)
        return;
    bottomInset_ = inset;
    changed_(inset);
}

} // namespace tessara
