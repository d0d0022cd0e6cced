#pragma once

#include "tessara/documents/FieldValueDTO.h"
#include "tessara/form/ControlValidationError.h"

#include <variant>
#include <vector>

namespace tessara {

class TSRControl;
class TSRValidateable;

// Walks controls in document order and collects what a step submits: hidden controls are
// skipped, sections are entered in place, optional checkboxes count as "false" when
// untouched, files are left to the upload chain. The first failing control ends the walk.
class FieldGatherer {
public:
    using Result = std::variant<std::vector<FieldValueDTO>, ControlValidationError>;

    FieldGatherer() = delete;

    static Result gather(const std::vector<TSRValidateable*>& controls, bool allowEmpty);

    // The controls of `controls` that hold input, in order.
    static std::vector<TSRValidateable*> validateables(const std::vector<TSRControl*>& controls);
    // Whether the control's own view is hidden (an ancestor's state does not count).
    static bool isHidden(const TSRControl& control);
};

} // namespace tessara
