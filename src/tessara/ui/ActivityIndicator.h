#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

namespace tessara {

// A painted spinning indicator (the mobile "activity indicator"). Hidden while stopped
// when `hidesWhenStopped` is set.
class ActivityIndicator : public QWidget {
    Q_OBJECT
public:
    enum class Style { medium, large };

    explicit ActivityIndicator(Style style = Style::medium, QWidget* parent = nullptr);

    void setColor(const QColor& color);
    QColor color() const { return color_; }
    void setHidesWhenStopped(bool hides);
    bool hidesWhenStopped() const { return hidesWhenStopped_; }

    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return timer_.isActive(); }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Style style_;
    QColor color_ = QColor(0x8e, 0x8e, 0x93);
    bool hidesWhenStopped_ = true;
    int phase_ = 0;
    QTimer timer_;
};

} // namespace tessara
