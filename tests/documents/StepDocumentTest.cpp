#include "DocumentTestSupport.h"
#include "tessara/documents/SpecialType.h"
#include "tessara/documents/SubmissionContainer.h"
#include "tessara/documents/SubmissionJSON.h"

#include <gtest/gtest.h>

using namespace tessara;
using tessara::test::decode;

namespace {

std::optional<FieldJSON> decodeField(const std::string& fieldJson) {
    const auto document = decode<SubmissionJSON>(R"({"fields":[)" + fieldJson + "]}");
    if (!document)
        return std::nullopt;
    EXPECT_EQ(document->fields.size(), 1u);
    return document->fields.front();
}

} // namespace

TEST(StepDocument, FieldDecodingRules) {
    // Each case is one field inside an otherwise valid document: a failure fails the document.
    const struct {
        const char* name;
        const char* field;
        bool decodes;
    } cases[] = {
        {"only type", R"({"type":"TEXT"})", true},
        {"no type", R"({"key":"k"})", false},
        {"null type", R"({"type":null})", false},
        {"unknown type", R"({"type":"SLIDER"})", false},
        {"type in lower case", R"({"type":"text"})", false},
        {"null optional", R"({"type":"TEXT","required":null,"label":null,"options":null,"maxSize":null})",
         true},
        {"bool as string", R"({"type":"CHECKBOX","required":"true"})", false},
        {"bool as number", R"({"type":"CHECKBOX","hidden":1})", false},
        {"string as number", R"({"type":"TEXT","label":5})", false},
        {"string as array", R"({"type":"TEXT","value":["a"]})", false},
        {"int as string", R"({"type":"TEXT","fieldId":"1"})", false},
        {"int with fraction", R"({"type":"TEXT","fieldId":1.5})", false},
        {"whole int written as float", R"({"type":"TEXT","fieldId":2.0})", true},
        {"int beyond 64 bits", R"({"type":"TEXT","flowFieldId":9223372036854775808})", false},
        {"negative max size", R"({"type":"UPLOAD_FILE","maxSize":-1})", false},
        {"largest max size", R"({"type":"UPLOAD_FILE","maxSize":18446744073709551615})", true},
        {"max size beyond 64 bits", R"({"type":"UPLOAD_FILE","maxSize":18446744073709551616})", false},
        {"option without id", R"({"type":"RADIO","options":[{"value":"a"}]})", false},
        {"option without value", R"({"type":"RADIO","options":[{"id":1}]})", false},
        {"option with null id", R"({"type":"RADIO","options":[{"id":null,"value":"a"}]})", false},
        {"option with unknown key", R"({"type":"RADIO","options":[{"id":1,"value":"a","x":[1]}]})", true},
        {"options not a list", R"({"type":"RADIO","options":{"id":1,"value":"a"}})", false},
        {"unknown operator", R"({"type":"TEXT","condition":{"operator":"GREATER"}})", false},
        {"known operator", R"({"type":"TEXT","condition":{"operator":"EQUAL","fieldKey":"k"}})", true},
        {"empty condition", R"({"type":"TEXT","condition":{}})", true},
        {"condition not an object", R"({"type":"TEXT","condition":"x"})", false},
        {"condition hide as string", R"({"type":"TEXT","condition":{"hide":"true"}})", false},
        {"extension not a string", R"({"type":"UPLOAD_FILE","allowedExt":["pdf",1]})", false},
        {"bad nested consent", R"({"type":"CONSENT","consentContent":[{"type":"TEXT"},{"type":"BAD"}]})",
         false},
        {"nested consent without type", R"({"type":"CONSENT","consentContent":[{"value":"x"}]})", false},
        {"unknown keys ignored", R"({"type":"TEXT","colour":{"r":1},"extra":[null]})", true},
        {"fields key ignored", R"({"type":"SECTION","fields":42})", true},
        {"field not an object", R"("TEXT")", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decodeField(c.field).has_value(), c.decodes) << c.name;
}

TEST(StepDocument, FieldKeepsThreeStateBooleansAndAbsentValues) {
    const auto bare = decodeField(R"({"type":"TEXT"})");
    ASSERT_TRUE(bare);
    EXPECT_EQ(*bare, FieldJSON{});
    const auto explicitFalse = decodeField(R"({"type":"TEXT","required":false,"hidden":false})");
    ASSERT_TRUE(explicitFalse);
    EXPECT_EQ(explicitFalse->isRequired, false);
    EXPECT_NE(*explicitFalse, *bare);
}

TEST(StepDocument, OnlyTheDoubleLSpellingOfAlignmentIsRead) {
    EXPECT_FALSE(decodeField(R"({"type":"TEXT","alignment":"LEFT"})")->alignment);
    EXPECT_EQ(decodeField(R"({"type":"TEXT","allignment":"LEFT"})")->alignment, "LEFT");
}

TEST(StepDocument, FieldsInsideAFieldAreNeverReadNorWritten) {
    const auto section = decodeField(R"({"type":"SECTION","key":"s","fields":[{"type":"TEXT"}]})");
    ASSERT_TRUE(section);
    EXPECT_FALSE(section->fields);

    FieldJSON expanded = *section;
    expanded.fields = std::vector<FieldJSON>{FieldJSON{}};
    EXPECT_EQ(test::str(encodeDocument(expanded)), R"({"key":"s","type":"SECTION"})");
}

TEST(StepDocument, NestedConsentContentFollowsTheSameRules) {
    const auto field = decodeField(R"({"type":"CONSENT","consentContent":[
        {"type":"TEXT","value":"a","required":true},
        {"type":"CONSENT","consentContent":[{"type":"LINK","label":"l","fields":[{"type":"TEXT"}]}]}]})");
    ASSERT_TRUE(field && field->consentContent);
    const auto& content = *field->consentContent;
    ASSERT_EQ(content.size(), 2u);
    EXPECT_EQ(content[0].isRequired, true);
    ASSERT_TRUE(content[1].consentContent);
    EXPECT_EQ(content[1].consentContent->front().type, FieldType::link);
    EXPECT_FALSE(content[1].consentContent->front().fields);
}

TEST(StepDocument, SubmissionDecodingRules) {
    const struct {
        const char* name;
        const char* json;
        bool decodes;
    } cases[] = {
        {"empty fields", R"({"fields":[]})", true},
        {"no fields", R"({"type":"FORM","name":"n","submissionId":"s","directionId":"d","processId":"p"})",
         false},
        {"null fields", R"({"fields":null})", false},
        {"fields not a list", R"({"fields":{}})", false},
        {"no type", R"({"fields":[],"name":"n"})", true},
        {"unknown type text", R"({"type":"SOMETHING_NEW","fields":[]})", true},
        {"type not a string", R"({"type":1,"fields":[]})", false},
        {"not an object", R"([{"fields":[]}])", false},
        {"null settings", R"({"fields":[],"settings":null})", true},
        {"settings not an object", R"({"fields":[],"settings":"x"})", false},
        {"valid urls",
         R"({"fields":[],"settings":{"signallingUrl":"wss://kyc.example.com/ws/","streamUrl":"https://s.example.com/"}})",
         true},
        {"signalling url without scheme", R"({"fields":[],"settings":{"signallingUrl":"kyc.example.com"}})",
         false},
        {"stream url with a space", R"({"fields":[],"settings":{"streamUrl":"https://exa mple.com/"}})",
         false},
        {"empty url", R"({"fields":[],"settings":{"streamUrl":""}})", false},
        {"url not a string", R"({"fields":[],"settings":{"streamUrl":5}})", false},
        {"settings products", R"({"fields":[],"settings":{"products":[{"itemValue":"7"},{"name":"n"},{}]}})",
         true},
        {"settings product value not a string", R"({"fields":[],"settings":{"products":[{"itemValue":7}]}})",
         false},
        {"bad credit product", R"({"fields":[],"creditProducts":[{"productId":1}]})", false},
        {"unknown keys", R"({"fields":[],"steps":[1,2],"meta":{"a":null}})", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decode<SubmissionJSON>(c.json).has_value(), c.decodes) << c.name;
}

TEST(StepDocument, SubmissionReadsItsKeysAndTheCreditExtras) {
    const auto document = decode<SubmissionJSON>(R"({
        "type":"CREDIT_CALCULATOR","name":"Кредит","submissionId":"sub-1","directionId":"dir-2",
        "processId":"proc-3","fields":[{"type":"TEXT"},{"type":"DATE"}],
        "settings":{"endUserCreditProductSelection":"true","products":[{"itemValue":"7","name":"Бърз"}],
                    "signallingUrl":"wss://kyc.example.com/signal","userHash":"h"},
        "creditProducts":[{"maxPrincipal":5000,"minPrincipal":100.5,"periods":[],"productId":7,
                           "productName":"p","productPeriodicity":"MONTHLY","productType":"LOAN"}],
        "instalmentDetails":{"selectedCreditAmount":1000,"selectedPeriod":12,"installmentAmount":88.85,
                             "totalDueAmount":1066.2,"acruals":[]},
        "type":"CREDIT_CALCULATOR"})");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->type, "CREDIT_CALCULATOR");
    EXPECT_EQ(document->name, QStringLiteral("Кредит"));
    EXPECT_EQ(document->submissionId, "sub-1");
    EXPECT_EQ(document->directionId, "dir-2");
    EXPECT_EQ(document->processId, "proc-3");
    ASSERT_EQ(document->fields.size(), 2u);
    EXPECT_EQ(document->fields[1].type, FieldType::date);
    ASSERT_TRUE(document->settings);
    EXPECT_EQ(document->settings->endUserCreditProductSelection, "true");
    EXPECT_EQ(document->settings->products,
              (std::vector<SubmissionSettingsItem>{{"7", QStringLiteral("Бърз")}}));
    EXPECT_EQ(document->settings->signallingUrl, QUrl("wss://kyc.example.com/signal"));
    EXPECT_FALSE(document->settings->streamUrl);
    EXPECT_EQ(document->settings->userHash, "h");
    ASSERT_TRUE(document->creditProducts);
    EXPECT_EQ(document->creditProducts->front().minPrincipal.description(), "100.5");
    ASSERT_TRUE(document->instalmentDetails);
    EXPECT_EQ(document->instalmentDetails->instalmentAmount.description(), "88.85");
}

TEST(StepDocument, DuplicateKeysTakeTheLastValue) {
    const auto document = decode<SubmissionJSON>(R"({"type":"A","fields":[],"type":"B"})");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->type, "B");
}

TEST(StepDocument, ListsAndContainerDecode) {
    const auto list = decode<std::vector<SubmissionJSON>>(R"([{"fields":[]},{"type":"KYC_ID","fields":[]}])");
    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 2u);
    EXPECT_EQ((*list)[1].type, "KYC_ID");
    EXPECT_FALSE(decode<std::vector<SubmissionJSON>>(R"([{"fields":[]},{}])"));
    EXPECT_FALSE(decode<std::vector<SubmissionJSON>>(R"({"fields":[]})"));

    const auto container = decode<SubmissionContainer>(R"({"direction":{"type":"INFO","fields":[]}})");
    ASSERT_TRUE(container);
    EXPECT_EQ(container->submission.type, "INFO");
    EXPECT_FALSE(decode<SubmissionContainer>(R"({"submission":{"fields":[]}})"));
    EXPECT_EQ(test::str(encodeDocument(*container)), R"({"direction":{"fields":[],"type":"INFO"}})");
}

TEST(StepDocument, EnumerationsMapEveryCaseToItsWireString) {
    for (int i = 0; i <= int(FieldType::date); ++i) {
        const auto type = FieldType(i);
        EXPECT_EQ(fieldTypeFromRaw(QStringView(rawValue(type))), type);
    }
    for (int i = 0; i < kSpecialTypeCount; ++i) {
        const auto type = SpecialType(i);
        EXPECT_EQ(specialTypeFromRaw(rawValue(type)), type);
    }
    EXPECT_EQ(rawValue(FieldType::submitButton), "SUBMIT");
    EXPECT_EQ(rawValue(FieldType::flowButton), "FLOW");
    EXPECT_EQ(rawValue(FieldType::inputArea), "AREA");
    EXPECT_EQ(rawValue(SpecialType::idFrontURL), "ID_FACE_URL");
    EXPECT_EQ(rawValue(SpecialType::middleNameEN), "FATHER_NAME_EN");
    EXPECT_EQ(rawValue(SpecialType::dateOfExpiration), "DATE_OF_EXPIRY");
    EXPECT_EQ(rawValue(SpecialType::issuingAuthority), "AUTHORITY");
    EXPECT_EQ(rawValue(SpecialType::firstInstalmentSetting), "FIRST_INSTALLMENT_SETTING");
    EXPECT_EQ(rawValue(GroupControlOperatorType::notEqual), "NOT_EQ");
    EXPECT_FALSE(specialTypeFromRaw(u"address"));
    EXPECT_FALSE(fieldTypeFromRaw(u"TEXT "));
}
