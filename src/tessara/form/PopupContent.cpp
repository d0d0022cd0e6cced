#include "tessara/form/PopupContent.h"

#include <QStringList>

namespace tessara {

std::optional<QString> PopupContent::paragraph(const FieldJSON& entry) {
    if (entry.type == FieldType::text || entry.type == FieldType::hint)
        return entry.value;
    // Buttons and inputs in a popup have nothing to press: their caption is the best text.
    if (entry.value)
        return entry.value;
    return entry.label;
}

PopupContent PopupContent::make(const FieldJSON& field, const std::vector<FieldJSON>& consentContent) {
    PopupContent content;
    QStringList lines;
    for (const FieldJSON& entry : consentContent) {
        if (auto line = paragraph(entry))
            lines << *line;
    }
    content.text = lines.join(QStringLiteral("\n\n"));

    std::optional<QString> title;
    if (field.options && field.value) {
        for (const FieldOption& option : *field.options) {
            if (option.value == *field.value) {
                title = option.label;
                break;
            }
        }
    }
    if (!title)
        title = field.label;
    if (!title)
        title = field.variableLabel;
    content.title = title.value_or(QString());
    return content;
}

} // namespace tessara
