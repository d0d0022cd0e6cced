#include "tessara/credit/TSRCreditCalculatorController.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/credit/CalculatorRows.h"
#include "tessara/credit/CalculatorValues.h"
#include "tessara/credit/ContinueButtonRow.h"
#include "tessara/credit/FloatSlider.h"
#include "tessara/credit/InstalmentDateButton.h"
#include "tessara/credit/TSRCreditProductDropdownButton.h"
#include "tessara/documents/SpecialType.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/NotificationBus.h"
#include "tessara/steps/StepSubmission.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/Alert.h"
#include "tessara/ui/CloseConfirmation.h"
#include "tessara/ui/CloseGlyphButton.h"
#include "tessara/ui/DisplayDate.h"
#include "tessara/ui/KeyboardGuide.h"
#include "tessara/ui/OverlayScrollBar.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cstdio>

namespace tessara {

namespace {

constexpr int kInset = 16;
const QString kClassName = QStringLiteral("TSRCreditCalculatorController");

void printLine(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fprintf(stdout, "%s\n", bytes.constData());
    std::fflush(stdout);
}

} // namespace

TSRCreditCalculatorController::TSRCreditCalculatorController(QWidget* parent)
    : TSRViewController(parent) {
    setObjectName(kClassName);
}

TSRCreditCalculatorController::~TSRCreditCalculatorController() {
    // The dropdown, a child, may still post while it is destroyed; this screen is no longer there.
    NotificationBus::instance().unsubscribe(this);
}

void TSRCreditCalculatorController::setVisible(bool visible) {
    if (visible)
        loadViewIfNeeded();
    TSRViewController::setVisible(visible);
}

void TSRCreditCalculatorController::loadViewIfNeeded() {
    if (viewLoaded_)
        return;
    if (!ui)
        fatalError(QStringLiteral("A calculator screen was built without its step document."));
    if (!ui->creditProducts)
        fatalError(QStringLiteral("The calculator step has no credit products."));
    viewLoaded_ = true;

    products_ = *ui->creditProducts;
    endUserCreditProductSelection_ =
        ui->settings && ui->settings->endUserCreditProductSelection == QLatin1String("true");
    instalmentDetails_ = ui->instalmentDetails;
    minMaxPrincipals_ = CreditRules::computeMinMaxPrincipals(products_);

    // The first letter is a Latin K; the rest is Cyrillic.
    setNavigationTitle(QStringLiteral("K") + QStringLiteral("редитен калкулатор"));
    amountFormatter_ = AmountFormat::configure(ui->fields);

    TSRAppearance& theme = currentAppearance();
    QPalette pal = palette();
    pal.setColor(QPalette::Highlight, theme.tintColor());
    pal.setColor(QPalette::Window, theme.backgroundColor());
    setPalette(pal);
    setAutoFillBackground(true);

    scrollView_ = new QScrollArea(this);
    scrollView_->setObjectName(kClassName + QStringLiteral(".scrollView"));
    scrollView_->setFrameShape(QFrame::NoFrame);
    scrollView_->setWidgetResizable(true);
    scrollView_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollView_->viewport()->setAutoFillBackground(false);
    scrollBar_ = new OverlayScrollBar(scrollView_, this);
    stackView_ = new QWidget(scrollView_);
    stackView_->setObjectName(kClassName + QStringLiteral(".stackView"));
    stackView_->setAutoFillBackground(false);
    stackLayout_ = new QVBoxLayout(stackView_);
    stackLayout_->setSpacing(SPACING_BETWEEN_ELEMENTS);
    stackLayout_->setContentsMargins(kInset, kInset, kInset, kInset);
    stackLayout_->addStretch(1);
    scrollView_->setWidget(stackView_);
    keyboard_ = new KeyboardGuide(this, [this](int) { layoutViews(); });

    setupControls();
    layoutViews();
}

void TSRCreditCalculatorController::resizeEvent(QResizeEvent* event) {
    TSRViewController::resizeEvent(event);
    layoutViews();
}

void TSRCreditCalculatorController::layoutViews() {
    if (!scrollView_)
        return;
    scrollView_->setGeometry(0, 0, width(), std::max(0, height() - keyboard_->bottomInset()));
    scrollBar_->follow();
}

const FieldJSON* TSRCreditCalculatorController::fieldOfSpecialType(const QString& specialType) const {
    for (const FieldJSON& field : ui->fields) {
        if (field.specialType == specialType)
            return &field;
    }
    return nullptr;
}

QString TSRCreditCalculatorController::labelOr(const QString& specialType, const QString& fallback) const {
    const FieldJSON* field = fieldOfSpecialType(specialType);
    return field && field->label ? *field->label : fallback;
}

TSRCreditProductDropdownButton* TSRCreditCalculatorController::productDropdown() const {
    return dropdown_;
}

QPushButton* TSRCreditCalculatorController::continueButton() const {
    return continueRow_ ? continueRow_->button() : nullptr;
}

ActivityIndicator* TSRCreditCalculatorController::loadingIndicator() const {
    return continueRow_ ? continueRow_->loadingIndicator() : nullptr;
}

QString TSRCreditCalculatorController::formatAmount(const Decimal& value) const {
    return AmountFormat::formatAmount(amountFormatter_, value);
}

QString TSRCreditCalculatorController::formatDate(const QDate& date) {
    return displayDate(date);
}

void TSRCreditCalculatorController::clearRows() {
    // Everything but the dropdown goes: it keeps the user's choice on show across rebuilds.
    for (int i = stackLayout_->count() - 1; i >= 0; --i) {
        QWidget* widget = stackLayout_->itemAt(i)->widget();
        if (!widget || widget == dropdown_)
            continue;
        delete stackLayout_->takeAt(i);
        widget->hide();
        widget->deleteLater();
    }
}

void TSRCreditCalculatorController::addSpinner() {
    stackLayout_->insertWidget(stackLayout_->count() - 1, CalculatorRows::spinner(), 0, Qt::AlignHCenter);
}

void TSRCreditCalculatorController::setupControls() {
    clearRows();
    const bool choosing = endUserCreditProductSelection_ && ui->settings && ui->settings->products &&
                          ui->settings->products->size() > 1;
    if (choosing) {
        ensureDropdown();
        if (selectedProduct_) {
            addSpinner();
            QPointer<TSRCreditCalculatorController> self(this);
            prepareSelectedProduct([self](std::optional<TSRError> failure) {
                if (!self || !failure)
                    return;
                self->clearRows();
                const auto* network = std::get_if<TSRNetworkError>(&*failure);
                if (network && network->kind() == TSRNetworkError::Kind::custom)
                    self->showError(network->text());
                else
                    printLine(errorDescription(*failure));
            });
        }
    } else {
        addSpinner();
        QPointer<TSRCreditCalculatorController> self(this);
        prepareInitialSelection([self] {
            if (self)
                self->buildRows();
        });
    }

    auto* close = new CloseGlyphButton; // owned by this screen through setRightBarItem
    close->setObjectName(kClassName + QStringLiteral(".closeButton"));
    connect(close, &QAbstractButton::clicked, this, &TSRCreditCalculatorController::closeHandler);
    setRightBarItem(close);
}

void TSRCreditCalculatorController::ensureDropdown() {
    if (dropdown_)
        return;
    const FieldJSON* field = fieldOfSpecialType(rawValue(SpecialType::chooseProduct));
    if (!field)
        fatalError(
            QStringLiteral("The calculator lets the user choose a product but has no CHOOSE_PRODUCT field."));
    auto* dropdown = new TSRCreditProductDropdownButton; // owned by the stack once inserted
    dropdown->field = *field;
    dropdown->products = products_;
    dropdown->setup();
    stackLayout_->insertWidget(0, dropdown);
    dropdown_ = dropdown;
    NotificationBus::instance().subscribe(
        dropdown->productNotificationName(), this,
        [this](const QVariantMap& userInfo) { handleNotification(userInfo); });
}

void TSRCreditCalculatorController::showError(const QString& message) {
    showAlert(
        this, QStringLiteral("Грешка"), message,
        {AlertAction{QStringLiteral("OK"), QStringLiteral("okAction"), AlertAction::Style::normal, true, {}}},
        currentAppearance().tintColor());
}

void TSRCreditCalculatorController::buildRows() {
    if (!selectedProduct_)
        fatalError(QStringLiteral("The calculator rows were built without a product."));
    if (!instalmentDetails_)
        fatalError(QStringLiteral("The calculator has no instalment plan to show."));
    clearRows();
    CalculatorRows rows;

    amountLabel_ = rows.valueLabel(QStringLiteral("amountLabel"),
                                   selectedProduct_->minPrincipal.description(), Qt::AlignHCenter);
    amountSlider_ = rows.slider(QStringLiteral("amountSlider"));
    stackLayout_->insertWidget(stackLayout_->count() - 1, rows.column(amountLabel_, amountSlider_));
    refreshAmountSliderBounds();

    const qint64 smallest =
        suitablePeriods_ && !suitablePeriods_->empty() ? suitablePeriods_->begin()->first : 0;
    periodLabel_ =
        rows.valueLabel(QStringLiteral("periodLabel"), QString::number(smallest), Qt::AlignHCenter);
    periodSlider_ = rows.slider(QStringLiteral("periodSlider"));
    stackLayout_->insertWidget(stackLayout_->count() - 1, rows.column(periodLabel_, periodSlider_));
    refreshPeriodSliderBounds();

    instalmentLabel_ = rows.valueLabel(QStringLiteral("instalmentLabel"),
                                       formatAmount(instalmentDetails_->instalmentAmount), Qt::AlignRight);
    stackLayout_->insertWidget(
        stackLayout_->count() - 1,
        rows.line(labelOr(rawValue(SpecialType::periodsSingular), QStringLiteral("Вноска")),
                  instalmentLabel_));
    totalDueAmountLabel_ = rows.valueLabel(QStringLiteral("totalDueAmountLabel"),
                                           formatAmount(instalmentDetails_->totalDueAmount), Qt::AlignRight);
    stackLayout_->insertWidget(
        stackLayout_->count() - 1,
        rows.line(labelOr(rawValue(SpecialType::totalAmountSetting), QStringLiteral("Сума за връщане")),
                  totalDueAmountLabel_));

    dateButton_ = new InstalmentDateButton;
    dateButton_->setObjectName(kClassName + QStringLiteral(".dateButton"));
    if (const FieldJSON* field = fieldOfSpecialType(rawValue(SpecialType::instalmentDate));
        field && field->key)
        dateButton_->setProperty("fieldKey", *field->key);
    dateButton_->activityIndicator()->setObjectName(kClassName +
                                                    QStringLiteral(".dateButton.activityIndicator"));
    connect(dateButton_, &InstalmentDateButton::dateChosen, this, &TSRCreditCalculatorController::chooseDate);
    stackLayout_->insertWidget(stackLayout_->count() - 1,
                               rows.dateLine(labelOr(rawValue(SpecialType::firstInstalmentSetting),
                                                     QStringLiteral("Първоначална дата")),
                                             dateButton_));
    loadInstalmentDates();

    QString title = QStringLiteral("Напред");
    for (const FieldJSON& field : ui->fields) {
        if (field.type == FieldType::flowButton && field.specialType == QLatin1String("CREDIT_SUBMIT")) {
            title = field.label.value_or(title);
            break;
        }
    }
    continueRow_ = new ContinueButtonRow(title);
    if (ui->settings && ui->settings->calculatorSubmitDirectionStepId)
        continueRow_->button()->setProperty("directionId", *ui->settings->calculatorSubmitDirectionStepId);
    connect(continueRow_->button(), &QPushButton::clicked, this,
            &TSRCreditCalculatorController::continueButtonTapped);
    stackLayout_->insertWidget(stackLayout_->count() - 1, continueRow_);

    // Keys of the fields each slider decides, for hosts that drive the screen by field key.
    if (const FieldJSON* field = fieldOfSpecialType(rawValue(SpecialType::amount)); field && field->key)
        amountSlider_->setProperty("fieldKey", *field->key);
    if (const FieldJSON* field = fieldOfSpecialType(rawValue(SpecialType::periods)); field && field->key)
        periodSlider_->setProperty("fieldKey", *field->key);
    connect(amountSlider_, &FloatSlider::floatValueChanged, this,
            &TSRCreditCalculatorController::amountSliderChanged);
    connect(amountSlider_, &FloatSlider::released, this, &TSRCreditCalculatorController::amountSliderStopped);
    connect(periodSlider_, &FloatSlider::floatValueChanged, this,
            &TSRCreditCalculatorController::periodSliderChanged);
    connect(periodSlider_, &FloatSlider::released, this, &TSRCreditCalculatorController::periodSliderStopped);

    refreshPlanLabels();
    amountSliderChanged();
    periodSliderChanged();
}

void TSRCreditCalculatorController::continueButtonTapped() {
    const CalculatorSelection selection{selectedAmount_, instalmentDetails_, selectedDate_, selectedPeriod_,
                                        selectedProduct_};
    std::vector<FieldValueDTO> fields = CalculatorValues::fieldValues(ui->fields, selection);

    continueRow_->loadingIndicator()->startAnimating();
    continueRow_->setButtonAlpha(0.0);

    if (!ui->submissionId)
        fatalError(QStringLiteral("The calculator step has no submissionId."));
    if (!ui->settings || !ui->settings->calculatorSubmitDirectionStepId)
        fatalError(QStringLiteral("The calculator step has no calculatorSubmitDirectionStepId."));
    if (!ui->directionId)
        fatalError(QStringLiteral("The calculator step has no directionId."));
    const SubmitStepDTO dto{*ui->submissionId, *ui->settings->calculatorSubmitDirectionStepId,
                            ui->directionId, std::nullopt, std::move(fields)};
    // A failed step is dropped: the button simply comes back.
    StepSubmission::send(*this, dto, [this](const std::optional<TSRError>&) {
        if (!continueRow_)
            return;
        continueRow_->loadingIndicator()->stopAnimating();
        continueRow_->setButtonAlpha(1.0);
    });
}

void TSRCreditCalculatorController::closeHandler() {
    showCloseConfirmation(this, QStringLiteral("Сигурни ли сте, че искате да затворите калкулатора?"),
                          [this] { dismissAndReportClose(); });
}

} // namespace tessara
