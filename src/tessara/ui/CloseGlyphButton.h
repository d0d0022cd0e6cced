#pragma once

#include <QAbstractButton>

namespace tessara {

// The round close button of a step screen's navigation bar: a soft grey disc with a
// thin cross, sized for a fingertip.
class CloseGlyphButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit CloseGlyphButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool hovered_ = false;
};

} // namespace tessara
