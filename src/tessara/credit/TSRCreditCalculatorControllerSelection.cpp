// The selection side of TSRCreditCalculatorController: the product, the amount and period
// sliders, the plan and the dates. The views and the submission are in
// TSRCreditCalculatorController.cpp.
#include "tessara/backend/TSRNetwork.h"
#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/documents/SpecialType.h"
#include "tessara/platform/FatalError.h"
#include "tessara/ui/ActivityIndicator.h"

#include <cstdio>

namespace tessara {

namespace {

void printLine(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fprintf(stdout, "%s\n", bytes.constData());
    std::fflush(stdout);
}

} // namespace

void TSRCreditCalculatorController::applyProductChange(const std::optional<CreditProductJSON>& product) {
    if (!product)
        fatalError(QStringLiteral("The calculator was given no product."));
    const bool changed = !selectedProduct_ || *selectedProduct_ != *product;
    selectedProduct_ = product;
    if (!changed)
        return;
    amountStep_ = product->step ? float(*product->step) : 1.0f;
    if (endUserCreditProductSelection_)
        setupControls();
}

void TSRCreditCalculatorController::prepareInitialSelection(std::function<void()> completion) {
    const MinMaxPrincipals bounds = CreditRules::computeMinMaxPrincipals(products_);
    if (!bounds.min)
        fatalError(CreditRules::productsNotSetText());
    selectedAmount_ = *bounds.min;
    suitablePeriods_ = CreditRules::computeSuitablePeriods(products_, selectedAmount_);
    if (suitablePeriods_->empty()) {
        showError(CreditRules::productsNotSetText());
        return;
    }
    selectedPeriod_ = suitablePeriods_->begin()->first;
    const auto& offered = suitablePeriods_->begin()->second;
    if (offered.empty()) {
        showError(CreditRules::noProductForPeriodText());
        return;
    }
    const CreditProductJSON first = offered.front();
    applyProductChange(first);
    requestPlan(first.productId, std::move(completion));
}

void TSRCreditCalculatorController::prepareSelectedProduct(
    std::function<void(std::optional<TSRError>)> finished) {
    minMaxPrincipals_ = CreditRules::computeMinMaxPrincipals({*selectedProduct_});
    const TSRError notSet = TSRNetworkError::custom(CreditRules::productsNotSetText());
    if (!minMaxPrincipals_.min || !minMaxPrincipals_.max)
        return finished(notSet);
    selectedAmount_ = *minMaxPrincipals_.min;
    suitablePeriods_ = CreditRules::computeSuitablePeriods({*selectedProduct_}, selectedAmount_);
    if (suitablePeriods_->empty())
        return finished(notSet);
    selectedPeriod_ = suitablePeriods_->begin()->first;
    QPointer<TSRCreditCalculatorController> self(this);
    TSRNetwork::shared().fetchInstalmentDetails(
        InstalmentDetailsDTO{selectedProduct_->productId, selectedAmount_, selectedPeriod_},
        [self, finished](TSRResult<CreditInstalmentDetailsJSON> result) {
            if (!self)
                return;
            if (!result.isSuccess())
                return finished(result.error());
            self->instalmentDetails_ = result.value();
            self->buildRows();
            finished(std::nullopt);
        });
}

void TSRCreditCalculatorController::refreshPlanLabels() {
    if (!instalmentDetails_)
        return;
    if (instalmentLabel_)
        instalmentLabel_->setText(formatAmount(instalmentDetails_->instalmentAmount));
    if (totalDueAmountLabel_)
        totalDueAmountLabel_->setText(formatAmount(instalmentDetails_->totalDueAmount));
}

void TSRCreditCalculatorController::refreshAmountSliderBounds() {
    if (!minMaxPrincipals_.min || !minMaxPrincipals_.max)
        fatalError(
            QStringLiteral("The amount slider has no bounds: %1").arg(CreditRules::productsNotSetText()));
    amountSlider_->setBounds(minMaxPrincipals_.min->toFloat(), minMaxPrincipals_.max->toFloat());
}

void TSRCreditCalculatorController::refreshPeriodSliderBounds() {
    if (!suitablePeriods_ || suitablePeriods_->empty())
        return;
    periodSlider_->setBounds(float(suitablePeriods_->begin()->first),
                             float(suitablePeriods_->rbegin()->first));
}

void TSRCreditCalculatorController::requestPlan(qint64 productId, std::function<void()> completion) {
    if (continueRow_) {
        continueRow_->loadingIndicator()->startAnimating();
        continueRow_->setButtonAlpha(0.0);
    }
    QPointer<TSRCreditCalculatorController> self(this);
    TSRNetwork::shared().fetchInstalmentDetails(
        InstalmentDetailsDTO{productId, selectedAmount_, selectedPeriod_},
        [self, completion = std::move(completion)](TSRResult<CreditInstalmentDetailsJSON> result) {
            if (!self)
                return;
            if (result.isSuccess()) {
                self->instalmentDetails_ = result.value();
                self->refreshPlanLabels();
            } else {
                printLine(errorDescription(result.error()));
            }
            if (completion)
                completion();
            if (self && self->continueRow_) {
                self->continueRow_->loadingIndicator()->stopAnimating();
                self->continueRow_->setButtonAlpha(1.0);
            }
        });
}

void TSRCreditCalculatorController::amountSliderChanged() {
    if (!amountSlider_)
        return;
    amountSlider_->setValue(CreditRules::snapAmount(amountSlider_->value(), amountStep_));
    selectedAmount_ = Decimal::fromDouble(double(amountSlider_->value()));
    amountLabel_->setText(formatAmount(selectedAmount_));

    if (endUserCreditProductSelection_) {
        if (!selectedProduct_)
            fatalError(QStringLiteral("The amount changed with no product chosen."));
        suitablePeriods_ = CreditRules::computeSuitablePeriods({*selectedProduct_}, selectedAmount_);
    } else {
        suitablePeriods_ = CreditRules::computeSuitablePeriods(products_, selectedAmount_);
    }
    if (suitablePeriods_->empty()) {
        showError(CreditRules::productsNotSetText());
        return;
    }
    refreshPeriodSliderBounds();
    if (!suitablePeriods_->contains(selectedPeriod_)) {
        periodSlider_->setValue(float(suitablePeriods_->begin()->first));
        periodSliderChanged();
    }
    // With the user choosing, the dropdown alone decides the product.
    if (endUserCreditProductSelection_)
        return;
    const auto offered = suitablePeriods_->find(selectedPeriod_);
    if (offered == suitablePeriods_->end() || offered->second.empty()) {
        showError(CreditRules::noProductForPeriodText());
        return;
    }
    applyProductChange(offered->second.front());
}

void TSRCreditCalculatorController::amountSliderStopped() {
    if (!selectedProduct_)
        fatalError(QStringLiteral("The amount was chosen with no product."));
    requestPlan(selectedProduct_->productId, nullptr);
    loadInstalmentDates();
}

void TSRCreditCalculatorController::periodSliderChanged() {
    if (!periodSlider_)
        return;
    printLine(QStringLiteral("periodSliderValueChanged(_:)"));
    const qint64 period = CreditRules::roundPeriod(periodSlider_->value());
    periodLabel_->setText(QString::number(period) + QLatin1Char(' ') +
                          labelOr(rawValue(SpecialType::periodsPlural), QStringLiteral("вноски")));
    periodSlider_->setValue(float(period));
    selectedPeriod_ = period;
}

void TSRCreditCalculatorController::periodSliderStopped() {
    if (!periodSlider_ || periodSlider_->minimumValue() == periodSlider_->maximumValue())
        return;
    const qint64 period = CreditRules::roundPeriod(periodSlider_->value());
    if (!suitablePeriods_)
        return;
    const auto offered = suitablePeriods_->find(period);
    if (offered == suitablePeriods_->end() || offered->second.empty())
        return;
    // The plan may rest on another product than the selected one until the amount moves.
    requestPlan(offered->second.front().productId, nullptr);
    loadInstalmentDates();
}

void TSRCreditCalculatorController::handleNotification(const QVariantMap& userInfo) {
    const QVariant entry = userInfo.value(QStringLiteral("value"));
    if (!entry.isValid() || entry.typeId() != QMetaType::QString)
        return;
    const std::optional<qint64> id = CreditRules::readInteger(entry.toString());
    if (!id)
        return;
    std::optional<CreditProductJSON> product;
    for (const CreditProductJSON& candidate : products_) {
        if (candidate.productId == *id) {
            product = candidate;
            break;
        }
    }
    applyProductChange(product);
}

void TSRCreditCalculatorController::loadInstalmentDates() {
    if (!dateButton_ || !selectedProduct_)
        return;
    dateButton_->showLoading();
    QPointer<TSRCreditCalculatorController> self(this);
    TSRNetwork::shared().fetchInstalmentDates(
        selectedProduct_->productId, [self](TSRResult<CreditInstalmentDatesJSON> result) {
            if (!self || !self->dateButton_)
                return;
            if (!result.isSuccess()) {
                printLine(errorDescription(result.error()));
                return;
            }
            self->instalmentDates_ = result.value();
            const std::vector<QDate>& dates = self->instalmentDates_->availableDates;
            self->selectedDate_ = dates.empty() ? std::nullopt : std::optional<QDate>(dates.front());
            // The backend's default is only shown; the earliest date is what is sent.
            const std::optional<QDate> shown = self->instalmentDates_->defaultFirstInstallmentDate
                                                   ? self->instalmentDates_->defaultFirstInstallmentDate
                                                   : self->selectedDate_;
            self->dateButton_->showDates(dates, self->selectedDate_, shown ? formatDate(*shown) : QString(),
                                         &TSRCreditCalculatorController::formatDate);
        });
}

void TSRCreditCalculatorController::chooseDate(const QDate& date) {
    selectedDate_ = date;
    dateButton_->setTitle(formatDate(date));
    if (QWidget* row = dateButton_->parentWidget())
        row->updateGeometry();
}

} // namespace tessara
