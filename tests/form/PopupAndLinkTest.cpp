// Popups, consent links to bundled steps, and outside links.

#include "FormTestSupport.h"
#include "tessara/form/LocalStepDocument.h"
#include "tessara/form/PopupContent.h"
#include "tessara/platform/HostHooks.h"

using namespace tessara;
using namespace tessara::test;

namespace {

FieldJSON entry(FieldType type, std::optional<QString> value, std::optional<QString> label = std::nullopt) {
    FieldJSON f;
    f.type = type;
    f.value = std::move(value);
    f.label = std::move(label);
    return f;
}

} // namespace

TEST(PopupContent, TitleAndParagraphs) {
    FieldJSON field;
    field.type = FieldType::flowButton;
    field.options =
        std::vector<FieldOption>{{1, QStringLiteral("Условия А"), QStringLiteral("A"), std::nullopt},
                                 {2, std::nullopt, QStringLiteral("B"), std::nullopt}};
    field.label = QStringLiteral("Етикет");
    field.variableLabel = QStringLiteral("Променлива");

    field.value = QStringLiteral("A");
    EXPECT_EQ(PopupContent::make(field, {}).title, QStringLiteral("Условия А"));
    field.value = QStringLiteral("B"); // the option has no label
    EXPECT_EQ(PopupContent::make(field, {}).title, QStringLiteral("Етикет"));
    field.label.reset();
    EXPECT_EQ(PopupContent::make(field, {}).title, QStringLiteral("Променлива"));
    field.variableLabel.reset();
    EXPECT_EQ(PopupContent::make(field, {}).title, QString());

    const std::vector<FieldJSON> content = {
        entry(FieldType::text, QStringLiteral("Първи абзац.")),
        entry(FieldType::hint, QStringLiteral("Втори абзац.")),
        entry(FieldType::text, std::nullopt, QStringLiteral("етикетът на текст не се показва")),
        entry(FieldType::link, std::nullopt, QStringLiteral("Връзка")),
        entry(FieldType::newLine, std::nullopt),
    };
    EXPECT_EQ(PopupContent::make(field, content).text,
              QStringLiteral("Първи абзац.\n\nВтори абзац.\n\nВръзка"));
}

TEST(Popup, FlowButtonOfPopupTypeShowsTheConsentTextAndNeverSubmits) {
    SubmissionJSON step = decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"FLOW","key":"info","label":"Какво приемам?","specialType":"POPUP","directionId":"n","fieldId":7,
         "consentContent":[{"type":"TEXT","value":"Данните се обработват за кредита."},
                           {"type":"TEXT","value":"Можете да оттеглите съгласието си."}]}]})");
    FormScreen screen(step);
    screen.click(QStringLiteral("TSRFlowButton.info"));

    Alert* alert = screen.alert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), QStringLiteral("Какво приемам?"));
    EXPECT_EQ(alert->informativeText(),
              QStringLiteral("Данните се обработват за кредита.\n\nМожете да оттеглите съгласието си."));
    ASSERT_EQ(alert->buttons().size(), 1);
    EXPECT_EQ(alert->buttons()[0]->text(), QStringLiteral("OK"));
    settle(100);
    EXPECT_EQ(screen.server.requestCount(), 0);
    EXPECT_FALSE(screen.form()->isLocked());
}

TEST(PopupDeathTest, MisconfiguredPopupsEndTheProgram) {
    const SubmissionJSON step = decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"TEXT","key":"plain","value":"Без съдържание","fieldId":3},
        {"type":"TEXT","key":"carrier","value":"С текст","fieldId":4,"consentContent":[{"type":"TEXT","value":"Т"}]}]})");
    auto popupFor = [&](std::optional<qint64> fieldId) {
        FormScreen screen(step);
        FieldJSON field;
        field.type = FieldType::flowButton;
        field.fieldId = fieldId;
        screen.form()->openPopup(field);
    };
    EXPECT_DEATH(popupFor(std::nullopt), "The form isn't configured properly.");
    EXPECT_DEATH(popupFor(99), "The form isn't configured properly.");
    EXPECT_DEATH(popupFor(3), "The form isn't configured properly.");
}

TEST(LinkFollow, ConsentLinkShowsTheBundledStepWithoutARequest) {
    ASSERT_TRUE(LocalStepDocument::load(QStringLiteral("consent-terms")).has_value());
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"sub-1","directionId":"personal","fields":[
        {"type":"CONSENT","key":"terms","label":"Приемам","required":true,"directionId":"consent-terms",
         "directionLabel":"общите условия"}]})"));

    testing::internal::CaptureStdout();
    screen.click(QStringLiteral("TSRConsentToggle.terms.linkButton"));
    const std::string printed = testing::internal::GetCapturedStdout();

    EXPECT_NE(printed.find(R"({"directionId":"consent-terms","fields":[],"fromDirectionId":"personal",)"
                           R"("fromFlowFieldId":"terms","submissionId":"sub-1"})"),
              std::string::npos)
        << printed;
    EXPECT_NE(printed.find("\"direction\""), std::string::npos);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return screen.form() && screen.form()->ui->directionId == "consent-terms"; }));
    EXPECT_EQ(screen.form()->previousDirectionId, QStringLiteral("personal"));
    EXPECT_FALSE(screen.form()->formFields().empty());
    settle(100);
    EXPECT_EQ(screen.server.requestCount(), 0);
}

TEST(LinkFollow, UnknownBundledStepOnlyPrintsTheRequest) {
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"sub-1","directionId":"personal","fields":[
        {"type":"CONSENT","key":"terms","label":"Приемам","directionId":"no-such-step","directionLabel":"условия"}]})"));
    testing::internal::CaptureStdout();
    screen.click(QStringLiteral("TSRConsentToggle.terms.linkButton"));
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find(R"("directionId":"no-such-step")"), std::string::npos);
    settle(100);
    EXPECT_EQ(screen.form()->ui->directionId, QStringLiteral("personal"));
}

TEST(LinkOpen, LinkButtonOpensItsUrlThroughTheHost) {
    HostHooks& hooks = HostHooks::instance();
    const auto saved = hooks.openUrl;
    std::vector<QUrl> opened;
    hooks.openUrl = [&opened](const QUrl& url) {
        opened.push_back(url);
        return true;
    };
    {
        FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
            {"type":"LINK","key":"privacy","label":"Поверителност","value":"example.com/privacy"}]})"));
        screen.click(QStringLiteral("TSRLinkButton.privacy"));
    }
    hooks.openUrl = saved;
    EXPECT_EQ(opened, std::vector<QUrl>{QUrl(QStringLiteral("https://example.com/privacy"))});
}
