#pragma once

#include "tessara/form/TSRControl.h"

#include <QWidget>

namespace tessara {

// A separator (HORIZONTAL_LINE) one physical pixel thick, in the separator colour.
class TSRHorizontalLine : public QWidget, public TSRControl {
    Q_OBJECT
public:
    explicit TSRHorizontalLine(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessara
