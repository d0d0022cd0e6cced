#pragma once

#include "tessara/documents/FieldJSON.h"

#include <vector>

class QWidget;

namespace tessara {

class TSRControl;

// Turns fields into controls: the class for each field type, `field` set, `setup` called,
// then the hidden state of the document applied. Fields that render nothing (NEW_LINE,
// GROUP, SUBMIT, a SECTION without fields) make no control.
class TSRControlFactory {
public:
    TSRControlFactory() = delete;

    // The controls for `fields`, in order, as children of `parent` (which owns them).
    // `parent` must not be null: a control's hidden state is only meaningful under one.
    static std::vector<TSRControl*> makeControls(const std::vector<FieldJSON>& fields, QWidget* parent);
    // One control, or nullptr for a field that renders nothing.
    static TSRControl* makeControl(const FieldJSON& field, QWidget* parent);

    // The document's hidden state at construction: hideInEndUserFrontend wins; else a
    // present variableType hides exactly when non-empty; else isHidden (absent = shown).
    static bool hiddenAtConstruction(const FieldJSON& field);
};

} // namespace tessara
