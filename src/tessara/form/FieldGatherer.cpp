#include "tessara/form/FieldGatherer.h"

#include "tessara/form/TSRSectionView.h"
#include "tessara/form/TSRValidateable.h"
#include "tessara/form/TextTrimming.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

namespace {

bool isToggle(FieldType type) {
    return type == FieldType::consent || type == FieldType::checkbox;
}

// Appends to `out`; returns the first validation failure.
std::optional<ControlValidationError> gatherInto(const std::vector<TSRValidateable*>& controls,
                                                 bool allowEmpty, std::vector<FieldValueDTO>& out) {
    for (TSRValidateable* control : controls) {
        if (FieldGatherer::isHidden(*control))
            continue;
        const FieldType type = control->type();

        if (type == FieldType::section || type == FieldType::group) {
            if (auto* section = dynamic_cast<TSRSectionView*>(control)) {
                if (auto error =
                        gatherInto(FieldGatherer::validateables(section->formFields), allowEmpty, out))
                    return error;
            }
            continue;
        }
        if (type == FieldType::nomenclature && !control->isRequired()) {
            // Codes from a list are sent exactly as chosen.
            if (control->value)
                out.push_back({control->key(), *control->value});
            continue;
        }
        if (isToggle(type) && !control->isRequired()) {
            if (!allowEmpty)
                out.push_back({control->key(), control->value.value_or(QStringLiteral("false"))});
            continue;
        }

        if (auto error = control->validate(allowEmpty))
            return error;

        if (allowEmpty && (!control->value || control->value->isEmpty()))
            continue;
        if (isToggle(type) && allowEmpty)
            continue;
        if (type == FieldType::uploadFile)
            continue; // the file travels by the upload chain

        if (!control->value)
            fatalError(QStringLiteral("The field \"%1\" of type %2 reached submission without a value.")
                           .arg(control->key(), rawValue(type)));
        out.push_back({control->key(), trimmedForSubmission(*control->value)});
    }
    return std::nullopt;
}

} // namespace

FieldGatherer::Result FieldGatherer::gather(const std::vector<TSRValidateable*>& controls, bool allowEmpty) {
    std::vector<FieldValueDTO> values;
    if (auto error = gatherInto(controls, allowEmpty, values))
        return *error;
    return values;
}

std::vector<TSRValidateable*> FieldGatherer::validateables(const std::vector<TSRControl*>& controls) {
    std::vector<TSRValidateable*> result;
    for (TSRControl* control : controls) {
        if (auto* v = dynamic_cast<TSRValidateable*>(control))
            result.push_back(v);
    }
    return result;
}

bool FieldGatherer::isHidden(const TSRControl& control) {
    return control.widget()->isHidden();
}

} // namespace tessara
