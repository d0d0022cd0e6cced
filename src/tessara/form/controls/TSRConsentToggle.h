#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QVariantMap>
#include <QWidget>

class QPushButton;

namespace tessara {

class TSRCheckbox;

// A consent (CONSENT): a checkbox and a link to the consent's text. The toggle copies its
// checkbox's announced value into its own `value`; it passes validation only when ticked.
class TSRConsentToggle : public QWidget, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRConsentToggle(QWidget* parent = nullptr);
    ~TSRConsentToggle() override;

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    // Passes only for "true"; `allowEmpty` plays no part.
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    TSRCheckbox* checkbox() const { return checkbox_; }
    QPushButton* linkButton() const { return linkButton_; }

    // Copies the announced "value" into `value`; anything but a string changes nothing.
    void handleNotification(const QVariantMap& userInfo);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // Asks the screen to show the consent's own step document.
    void linkAction();

    TSRCheckbox* checkbox_ = nullptr;
    QPushButton* linkButton_ = nullptr;
};

} // namespace tessara
