#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QAbstractButton>

namespace tessara {

// A checkbox (CHECKBOX): a square box and the field's label. Every change of the selection,
// by a click or by code (setSelected, or Qt's setChecked, toggle, click, animateClick),
// stores "true" or "false" in `value` and announces it, once. Before the first change
// `value` is absent.
class TSRCheckbox : public QAbstractButton, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRCheckbox(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    // Passes once the box was ever set, ticked or not; `allowEmpty` plays no part.
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    bool isSelected() const { return isChecked(); }
    // Sets the selection; stores and announces it even when it does not change.
    void setSelected(bool selected);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

    // Where the title's first line sits, so a neighbour can align to it.
    int firstBaseline() const;
    // Distance from the leading edge to the title, past the box.
    static int titleIndent();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& pos) const override;

private:
    void recordSelection(bool selected);
    QRectF boxRect() const;
    QRect titleRect(int width) const;
};

} // namespace tessara
