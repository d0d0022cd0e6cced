#pragma once

#include "tessara/documents/FieldOption.h"

#include <QAbstractButton>
#include <optional>

namespace tessara {

// One row of a radio group: a circle and the option's label.
class TSRRadioButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit TSRRadioButton(QWidget* parent = nullptr);

    // The option this row stands for.
    std::optional<FieldOption> fieldOption;

    // Shows `option`'s label (its value when it has none).
    void setFieldOption(const FieldOption& option);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& pos) const override;

private:
    QRect titleRect(int width) const;
};

} // namespace tessara
