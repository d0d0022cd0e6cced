#include "CalculatorTestSupport.h"
#include "tessara/ui/Alert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

namespace tessara::test {
namespace {

const QByteArray kProduct5 =
    R"({"productId":5,"productName":"Пет","productPeriodicity":"MONTHLY","productType":"L","minPrincipal":1,)"
    R"("maxPrincipal":9,"step":50,"periods":[{"period":12,"minPrincipal":1000,"maxPrincipal":5000},)"
    R"({"period":24,"minPrincipal":1000,"maxPrincipal":5000}]})";

const QByteArray kAllValueFields =
    R"({"type":"INPUT","key":"amount","specialType":"AMOUNT"},)"
    R"({"type":"INPUT","key":"total","specialType":"TOTAL_SUM"},)"
    R"({"type":"INPUT","key":"product","specialType":"PRODUCT_ID"},)"
    R"({"type":"INPUT","key":"periods","specialType":"PERIODS"},)"
    R"({"type":"INPUT","key":"date","specialType":"INSTALLMENT_DATE"},)"
    R"({"type":"INPUT","key":"instalment","specialType":"INSTALLMENT_AMOUNT"},)"
    R"({"type":"FLOW","key":"go","specialType":"CREDIT_SUBMIT","label":"Продължи"})";

SubmissionJSON singleProductStep(const QByteArray& fields = kAllValueFields,
                                 const QByteArray& products = kProduct5) {
    return decodeStep(R"({"type":"CREDIT_CALCULATOR","submissionId":"sub-1","directionId":"calc",)"
                      R"("settings":{"calculatorSubmitDirectionStepId":"next"},"fields":[)" +
                      fields + R"(],"creditProducts":[)" + products + "]}");
}

QAction* checkedAction(QMenu* menu) {
    for (QAction* action : menu->actions()) {
        if (action->isChecked())
            return action;
    }
    return nullptr;
}

Alert* openAlert() {
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* alert = qobject_cast<Alert*>(w); alert && alert->isVisible())
            return alert;
    }
    return nullptr;
}

TEST(CalculatorScreen, SubmitsTheSixValuesInTableOrderAsTheScreenShowsThem) {
    CalculatorBackend backend;
    CalculatorScreen screen(singleProductStep());
    TSRCreditCalculatorController* calculator = screen.calculator();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return calculator->dateButton() && calculator->dateButton()->isEnabled(); }));
    EXPECT_EQ(calculator->navigationTitle().toUtf8(),
              QByteArray("K\xd1\x80\xd0\xb5\xd0\xb4\xd0\xb8\xd1\x82\xd0\xb5\xd0\xbd "
                         "\xd0\xba\xd0\xb0\xd0\xbb\xd0\xba\xd1\x83\xd0\xbb\xd0\xb0\xd1\x82\xd0\xbe\xd1\x80"));

    CalculatorScreen::drag(calculator->amountSlider(), 2750.0f);
    ASSERT_TRUE(QTest::qWaitFor([&] { return backend.count("/installmentDetails") == 2; }));
    backend.quiet();
    EXPECT_EQ(backend.last("/installmentDetails")->body, R"({"amount":2750,"periods":12,"productId":5})");
    EXPECT_EQ(calculator->amountLabel()->text(), calculator->formatAmount(*Decimal::fromString("2750")));
    EXPECT_EQ(calculator->periodLabel()->text(), QStringLiteral("12 вноски"));
    EXPECT_EQ(calculator->instalmentLabel()->text(), calculator->formatAmount(*Decimal::fromString("237.5")));

    // The backend's default date is shown; the earliest date is ticked and sent.
    InstalmentDateButton* date = calculator->dateButton();
    ASSERT_TRUE(date->isEnabled());
    EXPECT_EQ(date->accessibleName(), TSRCreditCalculatorController::formatDate(QDate(2030, 3, 20)));
    ASSERT_NE(checkedAction(date->menu()), nullptr);
    EXPECT_EQ(checkedAction(date->menu())->data().toDate(), QDate(2030, 3, 15));

    QPushButton* go =
        screen.find<QPushButton>(QStringLiteral("TSRCreditCalculatorController.continueButton"));
    ASSERT_NE(go, nullptr);
    EXPECT_EQ(go->text(), QStringLiteral("Продължи"));
    QTest::mouseClick(go, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return backend.count("/step") == 1; }));
    const QByteArray ms = QByteArray::number(QDateTime(QDate(2030, 3, 15), QTime(0, 0)).toMSecsSinceEpoch());
    EXPECT_EQ(
        backend.last("/step")->body,
        R"({"directionId":"next","fields":[{"key":"amount","value":"2750"},{"key":"instalment","value":"237.5"},)"
        R"({"key":"date","value":")" +
            ms +
            R"("},{"key":"periods","value":"12"},{"key":"product","value":"5"},{"key":"total","value":"2750"}],)"
            R"("fromDirectionId":"calc","submissionId":"sub-1"})");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return screen.navigation->visibleViewController()->directionIdText() == "next"; }));
}

TEST(CalculatorScreen, MissingFieldsAreSkippedAndTitlesFallBack) {
    CalculatorBackend backend;
    CalculatorScreen screen(singleProductStep(R"({"type":"INPUT","key":"amount","specialType":"AMOUNT"},)"
                                              R"({"type":"INPUT","key":"periods","specialType":"PERIODS"})"));
    TSRCreditCalculatorController* calculator = screen.calculator();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return calculator->dateButton() && calculator->dateButton()->isEnabled(); }));
    QStringList titles;
    for (QLabel* label : calculator->stackView()->findChildren<QLabel*>())
        if (label->objectName().isEmpty())
            titles << label->text();
    EXPECT_EQ(titles, (QStringList{"Вноска", "Сума за връщане", "Първоначална дата"}));
    EXPECT_EQ(calculator->continueButton()->text(), QStringLiteral("Напред"));

    QTest::mouseClick(calculator->continueButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return backend.count("/step") == 1; }));
    EXPECT_EQ(
        backend.last("/step")->body,
        R"({"directionId":"next","fields":[{"key":"amount","value":"1000"},{"key":"periods","value":"12"}],)"
        R"("fromDirectionId":"calc","submissionId":"sub-1"})");
}

TEST(CalculatorScreen, APeriodBetweenKeysIsShownButRequestsNothing) {
    CalculatorBackend backend;
    CalculatorScreen screen(singleProductStep());
    TSRCreditCalculatorController* calculator = screen.calculator();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return calculator->dateButton() && calculator->dateButton()->isEnabled(); }));
    backend.quiet();
    const int requests = backend.server.requestCount();

    CalculatorScreen::drag(calculator->periodSlider(), 15.0f);
    backend.quiet();
    EXPECT_EQ(calculator->periodLabel()->text(), QStringLiteral("15 вноски"));
    EXPECT_EQ(calculator->selectedPeriod(), 15);
    EXPECT_EQ(backend.server.requestCount(), requests);

    // The next amount change finds no product for 15 and goes back to the smallest period.
    CalculatorScreen::drag(calculator->amountSlider(), 2000.0f);
    EXPECT_EQ(calculator->selectedPeriod(), 12);
    EXPECT_EQ(calculator->periodLabel()->text(), QStringLiteral("12 вноски"));
}

TEST(CalculatorScreen, AFailedDatesRequestKeepsTheDateButtonDisabled) {
    CalculatorBackend backend;
    backend.datesStatus = 500;
    CalculatorScreen screen(singleProductStep());
    TSRCreditCalculatorController* calculator = screen.calculator();
    ASSERT_TRUE(QTest::qWaitFor([&] { return backend.count("/installmentDates") == 1; }));
    backend.quiet();
    ASSERT_NE(calculator->dateButton(), nullptr);
    EXPECT_FALSE(calculator->dateButton()->isEnabled());
    EXPECT_EQ(calculator->selectedDate(), std::nullopt);
}

TEST(CalculatorScreen, AnAmountInAGapBetweenRangesShowsTheErrorAlert) {
    CalculatorBackend backend;
    const QByteArray gapped =
        R"({"productId":5,"productName":"A","productPeriodicity":"M","productType":"L","minPrincipal":1,)"
        R"("maxPrincipal":9,"periods":[{"period":12,"minPrincipal":1000,"maxPrincipal":2000},)"
        R"({"period":24,"minPrincipal":3000,"maxPrincipal":4000}]})";
    CalculatorScreen screen(singleProductStep(kAllValueFields, gapped));
    TSRCreditCalculatorController* calculator = screen.calculator();
    ASSERT_TRUE(QTest::qWaitFor([&] { return calculator->amountSlider() != nullptr; }));
    const float periodMax = calculator->periodSlider()->maximumValue();

    CalculatorScreen::drag(calculator->amountSlider(), 2500.0f);
    Alert* alert = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (alert = openAlert()) != nullptr; }));
    EXPECT_EQ(alert->text(), QStringLiteral("Грешка"));
    EXPECT_EQ(alert->informativeText(),
              QStringLiteral("Products are not properly set, please contact the admin"));
    ASSERT_EQ(alert->buttons().size(), 1);
    EXPECT_EQ(alert->buttons().first()->text(), QStringLiteral("OK"));
    EXPECT_EQ(calculator->periodSlider()->maximumValue(), periodMax);
    alert->buttons().first()->click();
}

TEST(CalculatorScreen, APlanThatArrivesAfterTheScreenIsGoneIsDropped) {
    CalculatorBackend backend;
    backend.planDelayMs = 200;
    {
        CalculatorScreen screen(singleProductStep());
        ASSERT_TRUE(QTest::qWaitFor([&] { return backend.count("/installmentDetails") == 1; }));
    }
    QTest::qWait(400); // the answer comes with no screen left to show it
    EXPECT_EQ(backend.count("/installmentDetails"), 1);
}

TEST(CalculatorScreen, CloseAsksFirstAndReportsTheStep) {
    CalculatorBackend backend;
    RecordingDelegate delegate;
    CalculatorScreen screen(singleProductStep(), &delegate);
    auto* close = screen.find<QAbstractButton>(QStringLiteral("TSRCreditCalculatorController.closeButton"));
    ASSERT_NE(close, nullptr);

    struct Case {
        const char* button;
        std::vector<QString> closed;
    };
    for (const Case& c : {Case{"cancelAction", {}}, Case{"destroyAction", {QStringLiteral("calc")}}}) {
        SCOPED_TRACE(c.button);
        close->click();
        Alert* alert = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] { return (alert = openAlert()) != nullptr; }));
        EXPECT_EQ(alert->text(), QStringLiteral("Сигурни ли сте, че искате да затворите калкулатора?"));
        EXPECT_EQ(alert->informativeText(),
                  QStringLiteral("Ако го затворите преди да го изпратите, попълнените данни ще се загубят."));
        auto* button = alert->findChild<QAbstractButton*>(QLatin1String(c.button));
        ASSERT_NE(button, nullptr);
        button->click();
        EXPECT_TRUE(QTest::qWaitFor([&] { return openAlert() == nullptr; }));
        EXPECT_EQ(delegate.closedSteps, c.closed);
    }
}

} // namespace
} // namespace tessara::test
