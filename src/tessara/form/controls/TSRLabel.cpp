#include "tessara/form/controls/TSRLabel.h"

#include "tessara/appearance/CurrentAppearance.h"

namespace tessara {

TSRLabel::TSRLabel(QWidget* parent)
    : QLabel(parent) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void TSRLabel::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    // Texts and hints carry their words in `label`; documents that put them in `value` are
    // shown too.
    setText(field->label ? *field->label : field->value.value_or(QString()));
    setFont(theme.font());
    QPalette p = palette();
    p.setColor(QPalette::WindowText, theme.textColor());
    setPalette(p);
    // A positioned label floats over the screen and reads best centred. The test ignores case,
    // like the form's own reading of position styles.
    const bool positioned =
        field->styleClass && field->styleClass->contains(QLatin1String("position"), Qt::CaseInsensitive);
    setAlignment((positioned ? Qt::AlignHCenter : Qt::AlignLeading) | Qt::AlignVCenter);
}

} // namespace tessara
