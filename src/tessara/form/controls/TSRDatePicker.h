#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QWidget>

class QDate;
class QDateEdit;
class QLabel;

namespace tessara {

// A date (DATE): a label and a compact date editor with a calendar popup. `value` holds the
// date as "yyyy-MM-dd". It is present from setup on: the field's own value when it is a valid
// date of that form, else today, so a date the user never touches still submits a value.
class TSRDatePicker : public QWidget, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRDatePicker(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    // A date is always acceptable.
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    QLabel* label() const { return label_; }
    QDateEdit* datePicker() const { return datePicker_; }

    // The wire form of dates, "yyyy-MM-dd".
    static QString dateFormat();

private:
    void datePicked(const QDate& date);

    QLabel* label_ = nullptr;
    QDateEdit* datePicker_ = nullptr;
};

} // namespace tessara
