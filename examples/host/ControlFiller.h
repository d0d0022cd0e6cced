#pragma once

#include <QString>
#include <optional>

class QWidget;

namespace tessara {
class TSRControl;
class TSRCheckbox;
class TSRDropdownButton;
} // namespace tessara

namespace tessara::demo {

class AnswerBook;

// Enters one answer into one form control, the way a user would where that is practical:
// typing into inputs, clicking the dropdown and then its menu item, clicking checkboxes and
// radio rows. Dates are set on the date editor and files are handed to the upload view, since
// calendar popups and file dialogs are no place for a robot.
class ControlFiller {
public:
    explicit ControlFiller(const AnswerBook& answers);

    struct Result {
        bool acted = false; // false for controls that hold no input (labels, buttons)
        QString entered;    // what was entered, for the log
        std::optional<QString> error;
    };

    Result fill(TSRControl& control);

    // The text a control gets when the answers name none.
    static constexpr const char* kDefaultText = "Тест";

    // Types `text` key by key into `widget`; characters outside Latin-1 are sent as key events
    // carrying their text, which is all a text editor reads.
    static void typeText(QWidget* widget, const QString& text);

private:
    Result fillText(TSRControl& control, QWidget* editor, bool multiLine);
    Result fillDropdown(TSRDropdownButton& dropdown);
    Result fillCheckbox(TSRControl& control, TSRCheckbox& box, std::optional<QString> answer);
    Result fillRadio(TSRControl& control);
    Result fillDate(TSRControl& control);
    Result fillUpload(TSRControl& control);

    const AnswerBook& answers_;
};

} // namespace tessara::demo
