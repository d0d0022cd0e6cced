#include "tessara/steps/StepPreparation.h"

#include "ApiFixtures.h"

namespace tessara::test {
namespace {

// Runs prepareStep and waits for its one answer.
struct Preparation {
    int calls = 0;
    bool inCall = false;
    bool calledDuringCall = false;
    std::optional<TSRResult<SubmissionJSON>> result;

    void run(TSRResult<SubmissionJSON> input) {
        inCall = true;
        prepareStep(std::move(input), TSRNetwork::shared(), [this](TSRResult<SubmissionJSON> r) {
            calledDuringCall = calledDuringCall || inCall;
            ++calls;
            result = std::move(r);
        });
        inCall = false;
    }
    bool wait() {
        return waitUntil([this] { return calls > 0; });
    }
};

// Answers section loads by path: "/api/step/<submission>/<key>" -> canned response.
LoopbackHttpServer::Handler sectionsByPath(std::map<QByteArray, CannedResponse> answers) {
    return [answers = std::move(answers)](const RecordedRequest& request) {
        auto it = answers.find(request.target);
        return it != answers.end() ? it->second : CannedResponse::noBody(404);
    };
}

TEST(PrepareStep, LoadsNestedSectionsThroughTheSamePreparation) {
    LoopbackHttpServer server;
    server.setHandler(sectionsByPath({
        {"/api/step/s-1/outer",
         CannedResponse::json(200, R"([{"type":"FORM","submissionId":"s-1","fields":[)"
                                   R"({"type":"TEXT","key":"o1"},{"type":"SECTION","key":"inner"}]}])")},
        {"/api/step/s-1/inner",
         CannedResponse::json(200, R"([{"type":"FORM","fields":[{"type":"DATE","key":"i1"}]},)"
                                   R"({"type":"FORM","fields":[{"type":"TEXT","key":"ignored"}]}])")},
    }));
    useServer(server);

    const SubmissionJSON document =
        decodeStep(R"({"type":"FORM","submissionId":"s-1","fields":[)"
                   R"({"type":"TEXT","key":"t"},{"type":"SECTION","key":"outer"}]})");
    Preparation preparation;
    preparation.run(document);
    ASSERT_TRUE(preparation.wait());

    ASSERT_TRUE(preparation.result->isSuccess());
    SubmissionJSON expected = document;
    FieldJSON inner = field(FieldType::section, QStringLiteral("inner"));
    inner.fields = std::vector<FieldJSON>{field(FieldType::date, QStringLiteral("i1"))};
    expected.fields[1].fields = std::vector<FieldJSON>{field(FieldType::text, QStringLiteral("o1")), inner};
    EXPECT_EQ(preparation.result->value(), expected);
    EXPECT_EQ(server.requestCount(), 2);
}

TEST(PrepareStep, LoadsAllSectionsAtOnceAndOneFailureFailsTheStep) {
    LoopbackHttpServer server;
    server.setHandler(sectionsByPath({
        {"/api/step/s-1/a",
         CannedResponse::json(200, R"([{"fields":[{"type":"TEXT","key":"a1"}]}])").afterMs(400)},
        {"/api/step/s-1/b", CannedResponse::json(400, R"({"message":"Секцията липсва"})")},
    }));
    useServer(server);

    Preparation preparation;
    preparation.run(decodeStep(R"({"type":"FORM","submissionId":"s-1","fields":[)"
                               R"({"type":"SECTION","key":"a"},{"type":"SECTION","key":"b"}]})"));
    // Both loads are on their way before the slow one answers.
    ASSERT_TRUE(server.waitForRequests(2, 350));
    ASSERT_TRUE(preparation.wait());
    settle();
    EXPECT_EQ(preparation.calls, 1);
    ASSERT_FALSE(preparation.result->isSuccess());
    EXPECT_EQ(preparation.result->error(), TSRError(TSRBackendError{QStringLiteral("Секцията липсва")}));
}

TEST(PrepareStep, OfSeveralFailuresTheLastToFinishDecides) {
    LoopbackHttpServer server;
    server.setHandler(sectionsByPath({
        {"/api/step/s-1/late", CannedResponse::json(400, R"({"message":"late"})").afterMs(200)},
        {"/api/step/s-1/early", CannedResponse::json(400, R"({"message":"early"})")},
    }));
    useServer(server);

    Preparation preparation;
    preparation.run(decodeStep(R"({"type":"FORM","submissionId":"s-1","fields":[)"
                               R"({"type":"SECTION","key":"late"},{"type":"SECTION","key":"early"}]})"));
    ASSERT_TRUE(preparation.wait());
    ASSERT_FALSE(preparation.result->isSuccess());
    EXPECT_EQ(preparation.result->error(), TSRError(TSRBackendError{QStringLiteral("late")}));
}

TEST(PrepareStep, DocumentsThatAreNotExpandedPassUnchangedAndLater) {
    LoopbackHttpServer server;
    useServer(server);
    SubmissionJSON nestedInGroup =
        decodeStep(R"({"type":"FORM","submissionId":"s-1","fields":[{"type":"GROUP"}]})");
    // Only top-level fields are walked: a section inside a group stays as it is.
    nestedInGroup.fields[0].fields = std::vector<FieldJSON>{field(FieldType::section, QStringLiteral("x"))};

    struct Case {
        const char* name;
        TSRResult<SubmissionJSON> input;
    };
    const std::vector<Case> cases{
        {"selfie with a section",
         decodeStep(R"({"type":"SELFIE","submissionId":"s-1","fields":[{"type":"SECTION","key":"x"}]})")},
        {"doc data with a section",
         decodeStep(R"({"type":"DOC_DATA","submissionId":"s-1","fields":[{"type":"SECTION","key":"x"}]})")},
        {"no type with a section",
         decodeStep(R"({"submissionId":"s-1","fields":[{"type":"SECTION","key":"x"}]})")},
        {"form without sections", decodeStep(R"({"type":"FORM","fields":[{"type":"TEXT","key":"t"}]})")},
        {"section inside a group", nestedInGroup},
        {"failure", TSRNetworkError::timeout()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Preparation preparation;
        preparation.run(c.input);
        EXPECT_EQ(preparation.calls, 0);
        ASSERT_TRUE(preparation.wait());
        EXPECT_FALSE(preparation.calledDuringCall);
        ASSERT_EQ(preparation.result->isSuccess(), c.input.isSuccess());
        if (c.input.isSuccess())
            EXPECT_EQ(preparation.result->value(), c.input.value());
        else
            EXPECT_EQ(preparation.result->error(), c.input.error());
    }
    settle();
    EXPECT_EQ(server.requestCount(), 0);
}

const QByteArray kProducts =
    R"([{"productId":3,"productName":"Три","productPeriodicity":"M","productType":"L","minPrincipal":1,)"
    R"("maxPrincipal":9,"periods":[{"period":12,"minPrincipal":500,"maxPrincipal":900}]},)"
    R"({"productId":9,"productName":"Девет","productPeriodicity":"M","productType":"L","minPrincipal":1,)"
    R"("maxPrincipal":9,"periods":[]}])";

TEST(PrepareStep, CreditCalculatorStepGetsTheProductsItsSettingsKeep) {
    struct Case {
        const char* name;
        QByteArray settings;
        CannedResponse answer;
        std::vector<qint64> kept; // empty with `error` set: the step fails
        std::optional<TSRError> error;
    };
    const TSRError notSet =
        TSRNetworkError::custom("Products are not properly set, please contact the admin");
    const std::vector<Case> cases{
        {"no settings", "", CannedResponse::json(200, kProducts), {3, 9}, std::nullopt},
        {"settings order",
         R"(,"settings":{"products":[{"itemValue":"9"},{"itemValue":"+3"},{"itemValue":"x"}]})",
         CannedResponse::json(200, kProducts),
         {3, 9},
         std::nullopt},
        {"empty list", R"(,"settings":{"products":[]})", CannedResponse::json(200, kProducts), {}, notSet},
        {"only a product without periods",
         R"(,"settings":{"products":[{"itemValue":"9"}]})",
         CannedResponse::json(200, kProducts),
         {},
         notSet},
        {"backend refuses",
         "",
         CannedResponse::json(400, R"({"message":"Няма продукти"})"),
         {},
         TSRError(TSRBackendError{QStringLiteral("Няма продукти")})},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LoopbackHttpServer server;
        server.enqueue(c.answer);
        useServer(server);
        const SubmissionJSON document = decodeStep(
            R"({"type":"CREDIT_CALCULATOR","fields":[{"type":"SECTION","key":"s"}])" + c.settings + "}");
        Preparation preparation;
        preparation.run(document);
        ASSERT_TRUE(preparation.wait());
        EXPECT_FALSE(preparation.calledDuringCall);
        ASSERT_EQ(server.requestCount(), 1);
        EXPECT_EQ(server.requests()[0].target, "/api/custom/credit/products");
        ASSERT_EQ(preparation.result->isSuccess(), !c.error.has_value());
        if (c.error) {
            EXPECT_EQ(preparation.result->error(), *c.error);
            continue;
        }
        // Nothing else changes: a calculator's sections are not loaded.
        SubmissionJSON expected = document;
        expected.creditProducts = preparation.result->value().creditProducts;
        EXPECT_EQ(preparation.result->value(), expected);
        std::vector<qint64> kept;
        for (const CreditProductJSON& p : *preparation.result->value().creditProducts)
            kept.push_back(p.productId);
        EXPECT_EQ(kept, c.kept);
    }
}

TEST(PrepareStepDeathTest, MalformedSectionsEndTheProgram) {
    struct Case {
        const char* name;
        QByteArray document;
        const char* message;
    };
    const std::vector<Case> cases{
        {"no submission id", R"({"type":"FORM","fields":[{"type":"SECTION","key":"a"}]})", "no submissionId"},
        {"no key", R"({"type":"FORM","submissionId":"s-1","fields":[{"type":"SECTION"}]})", "no key"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_DEATH(
            {
                Preparation preparation;
                preparation.run(decodeStep(c.document));
            },
            c.message);
    }
}

} // namespace
} // namespace tessara::test
