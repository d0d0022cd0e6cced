#pragma once

#include "tessara/documents/FieldOption.h"
#include "tessara/form/controls/TSRInputField.h"

class QActionGroup;
class QMenu;
class QPushButton;
class QToolButton;

namespace tessara {

// A single choice from a list (DROPDOWN, NOMENCLATURE): a read-only field that opens a menu
// of the field's options. Choosing sets the text to the option's label, `value` to its value,
// and announces the value.
class TSRDropdownButton : public TSRInputField {
    Q_OBJECT
public:
    explicit TSRDropdownButton(QWidget* parent = nullptr);
    ~TSRDropdownButton() override;

    void setup() override;
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    // The chevron on the right (".arrowsButton"); it takes no clicks of its own.
    QToolButton* arrowsButton() const { return arrowsButton_; }
    // The transparent button over the whole field (".mainButton"); a click opens the menu.
    QPushButton* mainButton() const { return mainButton_; }
    // The menu of options, one checkable action per option in document order.
    QMenu* menu() const { return menu_; }

    // Opens the menu under the field (what a click on the main button does).
    void openMenu();
    // Selects `option` as if the user chose it from the menu.
    void choose(const FieldOption& option);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeButtons();

    QToolButton* arrowsButton_ = nullptr;
    QPushButton* mainButton_ = nullptr;
    QMenu* menu_ = nullptr;
    QActionGroup* actionGroup_ = nullptr;
};

} // namespace tessara
