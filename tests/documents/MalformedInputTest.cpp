#include "DocumentTestSupport.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/JsonDom.h"
#include "tessara/documents/SubmissionJSON.h"

#include <gtest/gtest.h>
#include <random>

using namespace tessara;
using tessara::test::decode;

namespace {

const std::string kDocument =
    R"({"type":"FORM","fields":[{"type":"INPUT","key":"name","label":"Име","required":true,)"
    R"("options":[{"id":1,"value":"a"}],"condition":{"operator":"EQUAL","hide":false},"maxSize":5,)"
    R"("consentContent":[{"type":"TEXT","value":"\u0418\n"}]}],"settings":{"streamUrl":"wss://x.example/"},)"
    R"("creditProducts":[{"maxPrincipal":1e3,"minPrincipal":-0.5,"periods":[],"productId":1,)"
    R"("productName":"p","productPeriodicity":"m","productType":"t"}]})";

} // namespace

TEST(MalformedInput, NeverDecodesAndNeverCrashes) {
    ASSERT_TRUE(decode<SubmissionJSON>(kDocument));
    const std::string garbage[] = {
        "",
        " ",
        "null",
        "true",
        "{",
        "}",
        "[",
        R"({"fields":[]}})",
        R"({"fields":[]} {"fields":[]})",
        R"({"fields":[],})",
        R"({"fields":[,]})",
        R"({'fields':[]})",
        R"({fields:[]})",
        R"({"fields":[]/*c*/})",
        R"({"fields":NaN})",
        R"({"fields":[{"type":"TEXT","fieldId":01}]})",
        R"({"fields":[{"type":"TEXT","label":"\x"}]})",
        R"({"fields":[{"type":"TEXT","label":"\uD800"}]})",
        std::string(R"({"fields":[],"name":"a)") + '\0' + R"("})",
        "{\"fields\":[],\"name\":\"\xff\xfe\"}",                          // not UTF-8
        "{\"fields\":[],\"name\":\"\xc3\"}",                              // truncated UTF-8 sequence
        "{\"fields\":[],\"name\":\"tab\there\"}",                         // raw control character
        R"({"fields":[],"settings":{"products":[{"itemValue":1e999}]}})", // beyond double range
    };
    for (const auto& bytes : garbage)
        EXPECT_FALSE(decode<SubmissionJSON>(bytes)) << bytes;
}

TEST(MalformedInput, EveryTruncationFails) {
    for (size_t length = 0; length < kDocument.size(); ++length)
        EXPECT_FALSE(decode<SubmissionJSON>(kDocument.substr(0, length))) << length;
}

TEST(MalformedInput, RandomMutationsAreHandled) {
    std::mt19937 random(20240611);
    int decoded = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = kDocument;
        const int edits = 1 + int(random() % 4);
        for (int i = 0; i < edits; ++i) {
            const size_t pos = random() % bytes.size();
            switch (random() % 3) {
            case 0:
                bytes[pos] = char(random() % 256);
                break;
            case 1:
                bytes.erase(pos, 1);
                break;
            default:
                bytes.insert(pos, 1, "{}[]\",:0-e.tn\\"[random() % 14]);
            }
        }
        // Any outcome is fine as long as it is an outcome; a decoded document is still well formed.
        if (const auto document = decode<SubmissionJSON>(bytes)) {
            ++decoded;
            EXPECT_TRUE(encodeDocument(*document)) << bytes;
        }
        decode<std::vector<CreditProductJSON>>(bytes);
    }
    // Some mutations only touch text values; make sure the loop exercised both paths.
    EXPECT_GT(decoded, 0);
}

TEST(MalformedInput, DeepNestingIsRejectedWithoutExhaustingTheStack) {
    const int deep = 200000;
    EXPECT_FALSE(decode<SubmissionJSON>(std::string(deep, '[') + std::string(deep, ']')));
    EXPECT_FALSE(decode<SubmissionJSON>(R"({"fields":)" + std::string(deep, '[')));

    // Consent content nests a field list inside a field; a modest depth still decodes.
    const auto nested = [](int levels) {
        std::string json = R"({"type":"TEXT"})";
        for (int i = 0; i < levels; ++i)
            json = R"({"type":"CONSENT","consentContent":[)" + json + "]}";
        return R"({"fields":[)" + json + "]}";
    };
    EXPECT_TRUE(decode<SubmissionJSON>(nested(50)));
    EXPECT_FALSE(decode<SubmissionJSON>(nested(JsonDom::kMaxDepth)));
}
