#pragma once

#include "tessara/form/TSRControl.h"
#include "tessara/ui/BusyButton.h"

#include <optional>

namespace tessara {

// The main button of the closing screen. Made from a title, not by the factory; the screen
// connects `clicked`. Its objectName is "TSRA1Button" (plus "." and the key when it has a
// field with a key).
class TSRA1Button : public BusyButton, public TSRControl {
    Q_OBJECT
public:
    explicit TSRA1Button(QWidget* parent = nullptr);
    explicit TSRA1Button(const std::optional<QString>& title, QWidget* parent = nullptr);

    std::optional<QString> buttonTitle;

    void setup() override;
    QWidget* widget() override { return this; }
};

} // namespace tessara
