#include "tessara/form/TSRControlFactory.h"

#include "tessara/form/TSRSectionView.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRConsentToggle.h"
#include "tessara/form/controls/TSRDatePicker.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/form/controls/TSRFlowButton.h"
#include "tessara/form/controls/TSRHorizontalLine.h"
#include "tessara/form/controls/TSRInputArea.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRLabel.h"
#include "tessara/form/controls/TSRLinkButton.h"
#include "tessara/form/controls/TSRRadioButtonView.h"
#include "tessara/form/controls/TSRUploadFileView.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

std::vector<TSRControl*> TSRControlFactory::makeControls(const std::vector<FieldJSON>& fields,
                                                         QWidget* parent) {
    std::vector<TSRControl*> controls;
    controls.reserve(fields.size());
    for (const FieldJSON& field : fields) {
        if (TSRControl* control = makeControl(field, parent))
            controls.push_back(control);
    }
    return controls;
}

TSRControl* TSRControlFactory::makeControl(const FieldJSON& field, QWidget* parent) {
    if (!parent)
        fatalError(QStringLiteral("Form controls need a parent widget."));

    // Every control is owned by `parent` from its construction on.
    TSRControl* control = nullptr;
    switch (field.type) {
    case FieldType::text:
    case FieldType::hint:
        control = new TSRLabel(parent);
        break;
    case FieldType::horizontalLine:
        control = new TSRHorizontalLine(parent);
        break;
    case FieldType::inputField:
        control = new TSRInputField(parent);
        break;
    case FieldType::inputArea:
        control = new TSRInputArea(parent);
        break;
    case FieldType::checkbox:
        control = new TSRCheckbox(parent);
        break;
    case FieldType::radioButtons:
        control = new TSRRadioButtonView(parent);
        break;
    case FieldType::dropdown:
    case FieldType::nomenclature:
        control = new TSRDropdownButton(parent);
        break;
    case FieldType::flowButton:
        control = new TSRFlowButton(parent);
        break;
    case FieldType::section: {
        if (!field.fields)
            return nullptr;
        auto* section = new TSRSectionView(parent);
        // The rule holder must be known before setup, which subscribes to it.
        section->group = TSRSectionView::findGroup(field);
        control = section;
        break;
    }
    case FieldType::consent:
        control = new TSRConsentToggle(parent);
        break;
    case FieldType::uploadFile:
        control = new TSRUploadFileView(parent);
        break;
    case FieldType::link:
        control = new TSRLinkButton(parent);
        break;
    case FieldType::date:
        control = new TSRDatePicker(parent);
        break;
    case FieldType::newLine:
    case FieldType::group:
    case FieldType::submitButton:
        return nullptr;
    }

    control->field = field;
    control->setup();
    if (hiddenAtConstruction(field))
        control->widget()->hide();
    return control;
}

bool TSRControlFactory::hiddenAtConstruction(const FieldJSON& field) {
    if (field.hideInEndUserFrontend.value_or(false))
        return true;
    if (field.variableType)
        return !field.variableType->isEmpty();
    return field.isHidden.value_or(false);
}

} // namespace tessara
