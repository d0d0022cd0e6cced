#include "ApiFixtures.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/kyc/TSRNativeKYCController.h"
#include "tessara/platform/HostHooks.h"

namespace tessara::test {
namespace {

SubmissionJSON step(const QString& type, const QString& directionId) {
    SubmissionJSON document;
    document.type = type;
    document.directionId = directionId;
    document.submissionId = QStringLiteral("s-1");
    return document;
}

TEST(MakeStepController, EachTypeGetsItsScreenWhichInheritsFromTheCurrentOne) {
    HostHooks::instance().camera = QStringLiteral("synthetic");
    HostWidget host;
    for (const QString& type : {QStringLiteral("FORM"), QStringLiteral("SELFIE"), QStringLiteral("DOC_DATA"),
                                QStringLiteral("kyc_id"), QStringLiteral("KYC_ID "), QStringLiteral(""),
                                QStringLiteral("CREDIT_CALCULATOR"), QStringLiteral("KYC_ID")}) {
        SCOPED_TRACE(type.toStdString());
        TSRViewController current;
        current.ui = step(QStringLiteral("FORM"), QStringLiteral("d-current"));
        current.setFormDelegate(&host);

        SubmissionJSON document = step(type, QStringLiteral("d-next"));
        if (type == QLatin1String("KYC_ID")) {
            document.settings = SubmissionSettings{};
            document.settings->userHash = QStringLiteral("u-1");
            document.settings->streamUrl = QUrl(QStringLiteral("ws://127.0.0.1:9/"));
        }
        std::unique_ptr<TSRViewController> next = current.makeStepController(document);
        if (type == QLatin1String("CREDIT_CALCULATOR"))
            EXPECT_NE(qobject_cast<TSRCreditCalculatorController*>(next.get()), nullptr);
        else if (type == QLatin1String("KYC_ID"))
            EXPECT_NE(qobject_cast<TSRNativeKYCController*>(next.get()), nullptr);
        else
            EXPECT_NE(qobject_cast<TSRFormController*>(next.get()), nullptr);
        EXPECT_EQ(next->ui, document);
        EXPECT_EQ(next->formDelegate(), &host);
        EXPECT_EQ(next->previousDirectionId, QStringLiteral("d-current"));
    }
}

TEST(MakeStepController, TheFirstScreenHasNoPreviousStepAndMayHaveNoDelegate) {
    TSRRootController root;
    std::unique_ptr<TSRViewController> first = root.makeStepController(step(QStringLiteral("FORM"), "d-1"));
    EXPECT_EQ(first->previousDirectionId, std::nullopt);
    EXPECT_EQ(first->formDelegate(), nullptr);
}

TEST(MakeStepController, TheDelegateIsHeldWeakly) {
    TSRViewController current;
    {
        HostWidget host;
        current.setFormDelegate(&host);
        EXPECT_EQ(current.formDelegate(), &host);
    }
    EXPECT_EQ(current.formDelegate(), nullptr);
}

TEST(MakeStepControllerDeathTest, AVerificationStepWithoutItsSettingsEndsTheProgram) {
    TSRViewController current;
    SubmissionJSON document = step(QStringLiteral("KYC_ID"), QStringLiteral("d-kyc"));
    EXPECT_DEATH(current.makeStepController(document), "no userHash");
    document.settings = SubmissionSettings{};
    document.settings->userHash = QStringLiteral("u-1");
    EXPECT_DEATH(current.makeStepController(document), "no streamUrl");
}

TEST(MakeStepControllerDeathTest, ADocumentWithoutTypeEndsTheProgram) {
    TSRViewController current;
    SubmissionJSON untyped;
    EXPECT_DEATH(current.makeStepController(untyped), "Form type is nil\\.");
}

TEST(TransitionToStep, ReplacesTheWholeStackWithTheNextScreen) {
    HostWidget host;
    auto first = std::make_unique<TSRViewController>();
    first->ui = step(QStringLiteral("FORM"), QStringLiteral("d-1"));
    first->setFormDelegate(&host);
    QPointer<TSRViewController> firstScreen = first.get();
    auto* navigation = new TSRNavigationViewController(std::move(first), &host); // owned by host
    navigation->setGeometry(host.rect());
    navigation->show();

    navigation->setOverrideUserInterfaceStyle(TSRNavigationViewController::InterfaceStyle::dark);
    firstScreen->transitionToStep(step(QStringLiteral("FORM"), QStringLiteral("d-2")));

    ASSERT_EQ(navigation->viewControllers().size(), 1);
    QPointer<TSRViewController> second = navigation->visibleViewController();
    ASSERT_NE(second, firstScreen);
    EXPECT_EQ(second->previousDirectionId, QStringLiteral("d-1"));
    EXPECT_EQ(second->ui->directionId, QStringLiteral("d-2"));
    EXPECT_EQ(second->formDelegate(), &host);
    EXPECT_EQ(second->navigationController(), navigation);
    EXPECT_EQ(navigation->overrideUserInterfaceStyle(),
              TSRNavigationViewController::InterfaceStyle::unspecified);
    // The screen that left is no longer in any stack, and goes away once the loop runs.
    EXPECT_EQ(firstScreen->navigationController(), nullptr);
    EXPECT_TRUE(waitUntil([&] { return firstScreen.isNull(); }));

    second->transitionToStep(step(QStringLiteral("FORM"), QStringLiteral("d-3")));
    ASSERT_EQ(navigation->viewControllers().size(), 1);
    EXPECT_EQ(navigation->visibleViewController()->previousDirectionId, QStringLiteral("d-2"));
    EXPECT_TRUE(waitUntil([&] { return second.isNull(); }));
    EXPECT_TRUE(waitUntil([&] { return navigation->visibleViewController()->isVisible(); }));
}

TEST(DismissAndReportClose, TheRootLeavesAndTheDelegateLearnsTheStep) {
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);
    root->setFormDelegate(&host);
    root->presentStep(std::make_unique<TSRNavigationViewController>(
        root->makeStepController(step(QStringLiteral("FORM"), QStringLiteral("d-7")))));
    QPointer<TSRRootController> watched(root);
    TSRViewController* screen = root->navigationChild()->visibleViewController();

    screen->dismissAndReportClose();
    // Told at once, while the fade runs.
    EXPECT_EQ(host.closedSteps, std::vector<QString>{QStringLiteral("d-7")});
    EXPECT_TRUE(waitUntil([&] { return watched.isNull(); }));
    EXPECT_EQ(host.closedSteps.size(), 1u);
}

TEST(DismissAndReportClose, WithoutDelegateTheScreenOnlyLeaves) {
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);
    QPointer<TSRRootController> watched(root);
    // No delegate and no document: nothing to report, and nothing to check.
    root->dismissAndReportClose();
    EXPECT_TRUE(waitUntil([&] { return watched.isNull(); }));
    EXPECT_TRUE(host.closedSteps.empty());
}

TEST(DismissAndReportCloseDeathTest, ADelegateWithoutDirectionIdEndsTheProgram) {
    EXPECT_DEATH(
        {
            HostWidget host;
            TSRViewController screen;
            screen.setFormDelegate(&host);
            screen.ui = SubmissionJSON{};
            screen.dismissAndReportClose();
        },
        "no directionId");
}

} // namespace
} // namespace tessara::test
