#pragma once

#include "host/ScreenControl.h"

#include <QString>
#include <optional>

class QAbstractButton;

namespace tessara::demo {

class AnswerBook;

// Enters one answer into one control of an SDK screen the way a user does: typing into
// inputs, clicking the dropdown and then its menu item, clicking checkboxes and radio rows,
// choosing the file in the dialog the upload's menu opens. Dates are set on the date editor,
// since a calendar popup is no place for a robot. Controls are reached by objectName and
// used through their Qt base types.
class ControlFiller {
public:
    explicit ControlFiller(const AnswerBook& answers);

    struct Result {
        bool acted = false; // false for controls that hold no input (labels, buttons)
        QString entered;    // what was entered, for the log
        std::optional<QString> error;
    };

    Result fill(const ScreenControl& control);

    // The text a control gets when the answers name none.
    static constexpr const char* kDefaultText = "Тест";
    // How the answers write a date.
    static constexpr const char* kDateFormat = "yyyy-MM-dd";

private:
    Result fillText(const ScreenControl& control);
    Result fillDropdown(const ScreenControl& control);
    Result fillCheckbox(const ScreenControl& control, QAbstractButton* box);
    Result fillRadio(const ScreenControl& control);
    Result fillDate(const ScreenControl& control);
    Result fillUpload(const ScreenControl& control);

    const AnswerBook& answers_;
};

} // namespace tessara::demo
