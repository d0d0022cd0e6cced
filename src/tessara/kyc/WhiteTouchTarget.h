#pragma once

#include <QWidget>

namespace tessara {

// The touch target of the liveness check: a small white page with rounded corners and a white
// border, dim until the service reports the fingertip over it. It takes no touches itself.
class WhiteTouchTarget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double alpha READ alpha)
public:
    explicit WhiteTouchTarget(QWidget* parent = nullptr);

    // How opaque the target is drawn, 0 to 1.
    void setAlpha(double alpha);
    double alpha() const { return alpha_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double alpha_ = 1.0;
};

} // namespace tessara
