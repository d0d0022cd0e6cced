#pragma once

#include "tessara/form/TSRControl.h"

#include <QLabel>

namespace tessara {

// Static text (TEXT, HINT): the field's text, wrapped, centred when its style asks for a
// position.
class TSRLabel : public QLabel, public TSRControl {
    Q_OBJECT
public:
    explicit TSRLabel(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
};

} // namespace tessara
