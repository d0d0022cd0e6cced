#include "DocumentTestSupport.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/FieldValueDTO.h"
#include "tessara/documents/InstalmentDetailsDTO.h"
#include "tessara/documents/KYCStatusJSON.h"
#include "tessara/documents/SubmissionContainer.h"
#include "tessara/documents/SubmissionCreateDTO.h"
#include "tessara/documents/SubmitStepDTO.h"
#include "tessara/documents/UploadFileDTO.h"

#include <functional>
#include <gtest/gtest.h>

using namespace tessara;
using tessara::test::decode;
using tessara::test::str;

namespace {

Decimal dec(const char* text) {
    return *Decimal::fromString(std::string_view(text));
}

FieldJSON fullField() {
    FieldJSON field;
    field.type = FieldType::uploadFile;
    field.value = "v";
    field.styleClass = "s";
    field.key = "k";
    field.validation = "^.*$";
    field.validationError = "e";
    field.label = QStringLiteral("Лична карта");
    field.isRequired = true;
    field.options = std::vector<FieldOption>{{1, "l", "v", "v2"}, {2, std::nullopt, "w", std::nullopt}};
    field.directionId = "d";
    field.isHidden = false;
    field.hideInEndUserFrontend = true;
    field.condition = GroupControlConditionJSON{"f", "s", "1", GroupControlOperatorType::equal, false};
    field.directionLabel = "dl";
    field.variableLabel = "vl";
    field.variableType = "vt";
    field.specialType = "NAME";
    field.fieldId = -3;
    field.flowFieldId = 4;
    field.flowDirectionId = "fd";
    field.flowDirectionType = "ft";
    FieldJSON consent;
    consent.type = FieldType::text;
    consent.value = "c";
    field.consentContent = std::vector<FieldJSON>{consent};
    field.allowedFileExtensions = std::vector<QString>{"pdf"};
    field.maximumFileSize = 18446744073709551615ull;
    field.fileSizeError = "se";
    field.fileExtensionError = "ee";
    field.alignment = "CENTER";
    field.notes = "n";
    return field;
}

CreditProductJSON product() {
    return CreditProductJSON{dec("12.5"),
                             dec("9.99"),
                             dec("5000"),
                             dec("100"),
                             {{dec("5000"), dec("100"), 12}, {dec("3000.50"), dec("200"), 24}},
                             7,
                             QStringLiteral("Бърз кредит"),
                             "MONTHLY",
                             "LOAN",
                             50};
}

SubmissionJSON fullSubmission() {
    SubmissionJSON submission;
    submission.type = "CREDIT_CALCULATOR";
    submission.name = "n";
    submission.submissionId = "s";
    submission.directionId = "d";
    submission.processId = "p";
    submission.fields = {fullField(), FieldJSON{}};
    SubmissionSettings settings;
    settings.calculatorSubmitDirectionStepId = "a";
    settings.endUserCreditProductSelection = "true";
    settings.failedNoVideoStream = "b";
    settings.idBackFailDirectionStepId = "c";
    settings.idFaceFailDirectionStepId = "d";
    settings.livenessFailDirectionStepId = "e";
    settings.noCameraAccessDirectionStepId = "f";
    settings.noCameraDirectionId = "g";
    settings.noFaceDirectionStepId = "h";
    settings.noServiceDirectionStepId = "i";
    settings.products = std::vector<SubmissionSettingsItem>{{"7", "x"}, {std::nullopt, std::nullopt}};
    settings.signallingUrl = QUrl("wss://kyc.example.com/ws/");
    settings.streamUrl = QUrl("https://kyc.example.com/stream/");
    settings.userHash = "u";
    submission.settings = settings;
    submission.creditProducts = std::vector<CreditProductJSON>{product()};
    submission.instalmentDetails = CreditInstalmentDetailsJSON{
        dec("1000"), 12, dec("88.85"), dec("1066.20"), {{dec("66.2"), "INT", QStringLiteral("Лихва"), 1}}};
    return submission;
}

} // namespace

TEST(Encoding, RequestBodiesHaveSortedKeysAndLeaveAbsentValuesOut) {
    const struct {
        const char* name;
        std::optional<QByteArray> bytes;
        const char* expected;
    } cases[] = {
        {"step without values", encodeDocument(SubmitStepDTO{"s1", "d2", std::nullopt, std::nullopt, {}}),
         R"({"directionId":"d2","fields":[],"submissionId":"s1"})"},
        {"step with everything",
         encodeDocument(
             SubmitStepDTO{"s1", "d2", "d1", "77", {{"name", QStringLiteral("Иван")}, {"age", "42"}}}),
         R"({"directionId":"d2","fields":[{"key":"name","value":"Иван"},{"key":"age","value":"42"}],)"
         R"("fromDirectionId":"d1","fromFlowFieldId":"77","submissionId":"s1"})"},
        {"step with flow field only", encodeDocument(SubmitStepDTO{"s", "d", std::nullopt, "9", {}}),
         R"({"directionId":"d","fields":[],"fromFlowFieldId":"9","submissionId":"s"})"},
        {"upload", encodeDocument(UploadFileDTO{"s", "idFront", "d"}),
         R"({"fromDirectionId":"d","key":"idFront","submissionId":"s"})"},
        {"create without token", encodeDocument(SubmissionCreateDTO{"proc", std::nullopt}),
         R"({"processId":"proc"})"},
        {"create with token", encodeDocument(SubmissionCreateDTO{"proc", "tok"}),
         R"({"callingServiceToken":"tok","processId":"proc"})"},
        {"plan request", encodeDocument(InstalmentDetailsDTO{7, dec("1050.50"), 12}),
         R"({"amount":1050.5,"periods":12,"productId":7})"},
        {"plan request, large amount",
         encodeDocument(InstalmentDetailsDTO{-1, dec("123456789012345678901234567890.01"), 0}),
         R"({"amount":123456789012345678901234567890.01,"periods":0,"productId":-1})"},
        {"value", encodeDocument(FieldValueDTO{"k", ""}), R"({"key":"k","value":""})"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(str(c.bytes), c.expected) << c.name;
}

TEST(Encoding, StringsAreStandardJsonWithUtf8) {
    const QString text = QStringLiteral("Иван \"Q\" a/b \\ \n\r\t\b\f") + QChar(0x01) + QChar(0x1f) +
                         QChar(0x7f) + QStringLiteral("€😀");
    EXPECT_EQ(str(encodeDocument(FieldValueDTO{"k", text})),
              "{\"key\":\"k\",\"value\":\"Иван \\\"Q\\\" a/b \\\\ \\n\\r\\t\\b\\f\\u0001\\u001f\x7f€😀\"}");
    const auto back = decodeDocument<FieldValueDTO>(*encodeDocument(FieldValueDTO{"k", text}));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->value, text);
}

TEST(Encoding, TextThatCannotBeUtf8FailsToEncode) {
    const QString unpaired = QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b");
    EXPECT_FALSE(encodeDocument(FieldValueDTO{"k", unpaired}));
    EXPECT_FALSE(encodeDocument(SubmitStepDTO{"s", "d", std::nullopt, std::nullopt, {{"k", unpaired}}}));
    EXPECT_FALSE(encodeDocument(CreditInstalmentDatesJSON{"7", std::nullopt, {QDate()}}));
}

TEST(Encoding, EveryRecordIsCompactWithoutNullsAndDecodesBackEqual) {
    const struct {
        const char* name;
        std::function<std::optional<QByteArray>()> encode;
        std::function<bool(const QByteArray&)> decodesEqual;
    } cases[] = {
#define ROUND_TRIP(Type, value)                                                                              \
    {                                                                                                        \
#Type, [] { return encodeDocument<Type>(value); },                                                      \
     [](const QByteArray& bytes) { return decodeDocument<Type>(bytes) == std::optional<Type>(value); }    \
    }
        ROUND_TRIP(FieldJSON, fullField()),
        ROUND_TRIP(SubmissionJSON, fullSubmission()),
        ROUND_TRIP(SubmissionContainer, SubmissionContainer{fullSubmission()}),
        ROUND_TRIP(std::vector<SubmissionJSON>,
                   (std::vector<SubmissionJSON>{fullSubmission(), SubmissionJSON{}})),
        ROUND_TRIP(CreditProductJSON, product()),
        ROUND_TRIP(std::vector<CreditProductJSON>, (std::vector<CreditProductJSON>{product(), product()})),
        ROUND_TRIP(
            CreditInstalmentDatesJSON,
            (CreditInstalmentDatesJSON{"7", QDate(2026, 3, 1), {QDate(2026, 2, 1), QDate(2026, 3, 1)}})),
        ROUND_TRIP(KYCStatusJSON, (KYCStatusJSON{"SUCCESS", QStringLiteral("Готово")})),
        ROUND_TRIP(SubmitStepDTO, (SubmitStepDTO{"s", "d", "f", "g", {{"k", "v"}}})),
        ROUND_TRIP(UploadFileDTO, (UploadFileDTO{"s", "k", "d"})),
        ROUND_TRIP(SubmissionCreateDTO, (SubmissionCreateDTO{"p", "t"})),
        ROUND_TRIP(InstalmentDetailsDTO, (InstalmentDetailsDTO{7, dec("0.005"), 3})),
#undef ROUND_TRIP
    };
    for (const auto& c : cases) {
        const auto bytes = c.encode();
        ASSERT_TRUE(bytes) << c.name;
        const auto json = nlohmann::ordered_json::parse(bytes->toStdString());
        EXPECT_EQ(bytes->toStdString(), json.dump()) << c.name << ": not compact";
        EXPECT_FALSE(test::containsNull(json)) << c.name;
        EXPECT_TRUE(c.decodesEqual(*bytes)) << c.name << ": " << bytes->toStdString();
    }
}

TEST(Encoding, FieldWritesEveryPresentValueUnderItsWireName) {
    EXPECT_EQ(
        str(encodeDocument(fullField())),
        R"({"allignment":"CENTER","allowedExt":["pdf"],"condition":{"fieldKey":"f","hide":false,)"
        R"("operator":"EQUAL","sectionKey":"s","value":"1"},"consentContent":[{"type":"TEXT","value":"c"}],)"
        R"("directionId":"d","directionLabel":"dl","extError":"ee","fieldId":-3,"flowDirectionId":"fd",)"
        R"("flowDirectionType":"ft","flowFieldId":4,"hidden":false,"hideInEndUserFrontend":true,"key":"k",)"
        R"("label":"Лична карта","maxSize":18446744073709551615,"notes":"n",)"
        R"("options":[{"id":1,"label":"l","value":"v","value2":"v2"},{"id":2,"value":"w"}],"required":true,)"
        R"("sizeError":"se","specialType":"NAME","styleClass":"s","type":"UPLOAD_FILE","validation":"^.*$",)"
        R"("validationError":"e","value":"v","variableLabel":"vl","variableType":"vt"})");
}
