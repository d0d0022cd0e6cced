#pragma once

#include "tessara/documents/FieldJSON.h"

#include <QString>
#include <vector>

namespace tessara {

// Title and text of a field's popup, made from the consent content of the control that
// carries the field.
struct PopupContent {
    QString title;
    QString text;

    // Title: the label of the option whose value is the field's value, else the field's
    // label, else its variableLabel. Text: one paragraph per content entry that has text,
    // separated by a blank line.
    static PopupContent make(const FieldJSON& field, const std::vector<FieldJSON>& consentContent);

    // The paragraph of one content entry. TEXT and HINT give their value; any other kind
    // gives its value, or its label when it has no value; an entry with neither gives none.
    static std::optional<QString> paragraph(const FieldJSON& entry);
};

} // namespace tessara
