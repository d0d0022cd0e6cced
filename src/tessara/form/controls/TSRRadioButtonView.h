#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QWidget>
#include <vector>

class QButtonGroup;
class QLabel;

namespace tessara {

class TSRRadioButton;

// A single choice shown as radio rows (RADIO): the field's label as header, then one row per
// option in document order. Selecting a row stores the option's value and announces it. The
// list is as tall as its rows, so it never scrolls inside the form.
class TSRRadioButtonView : public QWidget, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRRadioButtonView(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    QLabel* headerLabel() const { return headerLabel_; }
    const std::vector<TSRRadioButton*>& radioButtons() const { return radioButtons_; }

private:
    void didSelect(TSRRadioButton* button);

    QLabel* headerLabel_ = nullptr;
    QButtonGroup* group_ = nullptr;
    std::vector<TSRRadioButton*> radioButtons_; // children of this view
};

} // namespace tessara
