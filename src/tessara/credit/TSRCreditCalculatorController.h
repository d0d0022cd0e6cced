#pragma once

#include "tessara/api/TSRViewController.h"
#include "tessara/backend/TSRError.h"
#include "tessara/credit/AmountFormat.h"
#include "tessara/credit/ContinueButtonRow.h"
#include "tessara/credit/CreditRules.h"
#include "tessara/credit/FloatSlider.h"
#include "tessara/credit/InstalmentDateButton.h"
#include "tessara/credit/TSRCreditProductDropdownButton.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"

#include <QDate>
#include <QLabel>
#include <QPointer>
#include <QVariantMap>
#include <functional>
#include <optional>

class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace tessara {

class ActivityIndicator;
class KeyboardGuide;
class OverlayScrollBar;

// The screen of a "CREDIT_CALCULATOR" step: the user picks a product (when the step lets
// them), an amount and a number of periods on sliders, sees the backend's plan for them,
// picks the first instalment date and continues; six values are submitted. Plans and dates
// are asked for when a slider is released, never while it moves. Every network answer
// arrives on the main thread and is dropped once the screen is gone. Main thread only.
class TSRCreditCalculatorController : public TSRViewController {
    Q_OBJECT
public:
    static constexpr int SPACING_BETWEEN_ELEMENTS = 24;
    static constexpr int SPACING_IN_ELEMENTS = 16;

    explicit TSRCreditCalculatorController(QWidget* parent = nullptr);
    ~TSRCreditCalculatorController() override;

    // Builds the screen from `ui` unless already built; showing the screen does it too.
    // Fatal when `ui` or its creditProducts are absent.
    void loadViewIfNeeded();
    void setVisible(bool visible) override;

    // The computing state.
    bool endUserCreditProductSelection() const { return endUserCreditProductSelection_; }
    const std::vector<CreditProductJSON>& products() const { return products_; }
    const std::optional<CreditProductJSON>& selectedProduct() const { return selectedProduct_; }
    const Decimal& selectedAmount() const { return selectedAmount_; }
    qint64 selectedPeriod() const { return selectedPeriod_; }
    float amountStep() const { return amountStep_; }
    const std::optional<QDate>& selectedDate() const { return selectedDate_; }
    const std::optional<CreditInstalmentDetailsJSON>& instalmentDetails() const { return instalmentDetails_; }
    const std::optional<CreditInstalmentDatesJSON>& instalmentDates() const { return instalmentDates_; }
    const std::optional<SuitablePeriods>& suitablePeriods() const { return suitablePeriods_; }
    const MinMaxPrincipals& minMaxPrincipals() const { return minMaxPrincipals_; }

    // The views, null until built.
    QScrollArea* scrollView() const { return scrollView_; }
    QWidget* stackView() const { return stackView_; }
    TSRCreditProductDropdownButton* productDropdown() const;
    QLabel* amountLabel() const { return amountLabel_; }
    FloatSlider* amountSlider() const { return amountSlider_; }
    QLabel* periodLabel() const { return periodLabel_; }
    FloatSlider* periodSlider() const { return periodSlider_; }
    QLabel* instalmentLabel() const { return instalmentLabel_; }
    QLabel* totalDueAmountLabel() const { return totalDueAmountLabel_; }
    InstalmentDateButton* dateButton() const { return dateButton_; }
    QPushButton* continueButton() const;
    ActivityIndicator* loadingIndicator() const;

    // The handlers the sliders are bound to: a change snaps and re-indexes, a release asks
    // for a plan and for the dates.
    void amountSliderChanged();
    void amountSliderStopped();
    void periodSliderChanged();
    void periodSliderStopped();
    // The dropdown's choice, posted with the entry "value".
    void handleNotification(const QVariantMap& userInfo);
    // Sets the product; a new one takes its step and, with the user choosing products,
    // rebuilds the controls. Fatal for an absent product.
    void applyProductChange(const std::optional<CreditProductJSON>& product);
    // Chooses a first instalment date from the menu.
    void chooseDate(const QDate& date);

    void continueButtonTapped();
    // Asks whether to close, then closes on "Затвори".
    void closeHandler();

    // The amount as the labels write it.
    QString formatAmount(const Decimal& value) const;
    // A date as the date button writes it: the locale's short date with the full year.
    static QString formatDate(const QDate& date);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void setupControls();
    void ensureDropdown();
    void addSpinner();
    void clearRows();
    void prepareInitialSelection(std::function<void()> completion);
    void prepareSelectedProduct(std::function<void(std::optional<TSRError>)> finished);
    void buildRows();
    void requestPlan(qint64 productId, std::function<void()> completion);
    void refreshPlanLabels();
    void refreshAmountSliderBounds();
    void refreshPeriodSliderBounds();
    void loadInstalmentDates();
    void showError(const QString& message);
    void layoutViews();
    const FieldJSON* fieldOfSpecialType(const QString& specialType) const;
    QString labelOr(const QString& specialType, const QString& fallback) const;

    bool viewLoaded_ = false;
    bool endUserCreditProductSelection_ = false;
    std::vector<CreditProductJSON> products_;
    std::optional<CreditInstalmentDetailsJSON> instalmentDetails_;
    std::optional<CreditInstalmentDatesJSON> instalmentDates_;
    std::optional<CreditProductJSON> selectedProduct_;
    Decimal selectedAmount_;
    float amountStep_ = 1.0f;
    qint64 selectedPeriod_ = 0;
    std::optional<QDate> selectedDate_;
    std::optional<AmountFormat> amountFormatter_;
    MinMaxPrincipals minMaxPrincipals_;
    std::optional<SuitablePeriods> suitablePeriods_;

    QScrollArea* scrollView_ = nullptr;
    OverlayScrollBar* scrollBar_ = nullptr;
    QWidget* stackView_ = nullptr;
    QVBoxLayout* stackLayout_ = nullptr;
    KeyboardGuide* keyboard_ = nullptr;
    QPointer<TSRCreditProductDropdownButton> dropdown_;
    QPointer<QLabel> amountLabel_;
    QPointer<FloatSlider> amountSlider_;
    QPointer<QLabel> periodLabel_;
    QPointer<FloatSlider> periodSlider_;
    QPointer<QLabel> instalmentLabel_;
    QPointer<QLabel> totalDueAmountLabel_;
    QPointer<InstalmentDateButton> dateButton_;
    QPointer<ContinueButtonRow> continueRow_;
};

} // namespace tessara
