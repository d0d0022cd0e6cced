#include "tessara/form/controls/TSRA1Button.h"

#include "tessara/ui/ButtonAppearance.h"

namespace tessara {

TSRA1Button::TSRA1Button(QWidget* parent)
    : TSRA1Button(std::nullopt, parent) {}

TSRA1Button::TSRA1Button(const std::optional<QString>& title, QWidget* parent)
    : BusyButton(parent)
    , buttonTitle(title) {
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    // Made from a title alone, the button is complete at construction.
    setup();
}

void TSRA1Button::setup() {
    const QString identifier = field && field->key ? accessibilityIdentifier() : className();
    setObjectName(identifier);
    setAccessibleName(identifier);
    setText(buttonTitle.value_or(QStringLiteral("MISSING_BUTTON_TITLE")));
    ButtonAppearance::apply(this);
}

} // namespace tessara
