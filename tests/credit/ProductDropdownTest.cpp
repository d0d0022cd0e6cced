#include "CalculatorTestSupport.h"
#include "tessara/platform/NotificationBus.h"

#include <QMenu>

namespace tessara::test {
namespace {

const QByteArray kTwoProducts =
    R"([{"productId":1,"productName":"Едно","productPeriodicity":"M","productType":"L","minPrincipal":1,)"
    R"("maxPrincipal":9,"step":100,"periods":[{"period":6,"minPrincipal":500,"maxPrincipal":3000}]},)"
    R"({"productId":2,"productName":"Две","productPeriodicity":"M","productType":"L","minPrincipal":1,)"
    R"("maxPrincipal":9,"periods":[{"period":12,"minPrincipal":2000,"maxPrincipal":9000}]}])";

SubmissionJSON choosingStep(const QByteArray& preset) {
    return decodeStep(
        R"({"type":"CREDIT_CALCULATOR","submissionId":"sub-1","directionId":"calc","settings":{)"
        R"("endUserCreditProductSelection":"true","calculatorSubmitDirectionStepId":"next",)"
        R"("products":[{"itemValue":"1"},{"itemValue":"2"}]},"fields":[)"
        R"({"type":"INPUT","key":"creditProduct","specialType":"CHOOSE_PRODUCT","label":"Продукт")" +
        preset + R"(}],"creditProducts":)" + kTwoProducts + "}");
}

TEST(ProductDropdown, APresetTicksByIdentifierAndShowsByName) {
    struct Case {
        const char* name;
        QByteArray preset;
        QString text;
        QString ticked; // empty: none
        int posts;      // at setup, then 10 ms after landing in its parent
    };
    const Case cases[] = {
        {"none", "", QString(QChar(0x200B)), {}, 0},
        {"identifier", R"(,"value":"2")", QString(QChar(0x200B)), QStringLiteral("2"), 2},
        {"name", R"(,"value":"Две")", QStringLiteral("Две"), {}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const SubmissionJSON step = choosingStep(c.preset);
        QWidget parent;
        int posts = 0;
        QObject listener;
        NotificationBus::instance().subscribe(NotificationBus::frameworkName(QStringLiteral("creditProduct")),
                                              &listener, [&](const QVariantMap& info) {
                                                  ++posts;
                                                  EXPECT_EQ(info.value(QStringLiteral("value")).toString(),
                                                            c.ticked);
                                              });
        auto* dropdown = new TSRCreditProductDropdownButton;
        dropdown->field = step.fields.front();
        dropdown->products = *step.creditProducts;
        dropdown->setup();
        dropdown->setParent(&parent);
        QTest::qWait(30);
        EXPECT_EQ(dropdown->text(), c.text);
        EXPECT_EQ(dropdown->objectName(), QStringLiteral("TSRCreditProductDropdownButton.creditProduct"));
        EXPECT_EQ(dropdown->placeholderText(), QStringLiteral("Продукт"));
        QStringList ticked;
        for (QAction* action : dropdown->menu()->actions())
            if (action->isChecked())
                ticked << action->objectName();
        EXPECT_EQ(ticked, c.ticked.isEmpty()
                              ? QStringList()
                              : QStringList{"TSRCreditProductDropdownButton.creditProduct." + c.ticked});
        EXPECT_EQ(posts, c.posts);
    }
}

TEST(ProductDropdown, TheCalculatorWaitsForAChoiceAndKeepsTheDropdownAcrossRebuilds) {
    CalculatorBackend backend;
    CalculatorScreen screen(choosingStep(""));
    TSRCreditCalculatorController* calculator = screen.calculator();
    QTest::qWait(50);
    EXPECT_EQ(calculator->amountSlider(), nullptr);
    EXPECT_EQ(backend.server.requestCount(), 0);
    QPointer<TSRCreditProductDropdownButton> dropdown = calculator->productDropdown();
    ASSERT_NE(dropdown, nullptr);

    struct Case {
        int product;
        QString name;
        QByteArray plan;
        float minimum;
    };
    for (const Case& c : {Case{2, "Две", R"({"amount":2000,"periods":12,"productId":2})", 2000.0f},
                          Case{1, "Едно", R"({"amount":500,"periods":6,"productId":1})", 500.0f}}) {
        SCOPED_TRACE(c.product);
        QAction* action = dropdown->menu()->findChild<QAction*>(
            QStringLiteral("TSRCreditProductDropdownButton.creditProduct.%1").arg(c.product));
        ASSERT_NE(action, nullptr);
        action->trigger();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return calculator->amountSlider() && calculator->amountSlider()->minimumValue() == c.minimum &&
                   calculator->dateButton()->isEnabled();
        }));
        EXPECT_EQ(calculator->productDropdown(), dropdown.data());
        EXPECT_EQ(dropdown->text(), c.name);
        EXPECT_EQ(calculator->selectedProduct()->productId, c.product);
        EXPECT_EQ(calculator->amountSlider()->minimumValue(), c.minimum);
        EXPECT_EQ(backend.last("/installmentDetails")->body, c.plan);
        // One set of rows only, under the dropdown.
        EXPECT_EQ(calculator->stackView()->findChildren<FloatSlider*>().size(), 2);
    }
}

} // namespace
} // namespace tessara::test
