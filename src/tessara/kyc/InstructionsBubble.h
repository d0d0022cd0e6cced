#pragma once

#include <QColor>
#include <QWidget>

namespace tessara {

// The rounded background the guidance text may sit on. A negative radius rounds the ends fully
// (half the height), whatever the height becomes.
class InstructionsBubble : public QWidget {
    Q_OBJECT
public:
    explicit InstructionsBubble(const QColor& color, double cornerRadius, QWidget* parent = nullptr);

    double cornerRadius() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color_;
    double cornerRadius_;
};

} // namespace tessara
