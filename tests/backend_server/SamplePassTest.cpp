// A whole credit request through the SDK's client, as the demo host runs it.
#include "ServedSample.h"
#include "tessara/documents/FieldType.h"

#include <QFile>
#include <QJsonArray>
#include <QMimeDatabase>

using namespace tessara;
using namespace tessara::testing;

namespace {

QJsonObject readAnswers() {
    QFile file(kCreditRequest + QStringLiteral("/answers.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool isEntered(FieldType type) {
    switch (type) {
    case FieldType::inputField:
    case FieldType::inputArea:
    case FieldType::checkbox:
    case FieldType::radioButtons:
    case FieldType::dropdown:
    case FieldType::consent:
    case FieldType::nomenclature:
    case FieldType::date:
        return true;
    default:
        return false;
    }
}

class SamplePass : public ServedSample {
protected:
    // The values a user following answers.json sends for a step, in document order; sections are
    // loaded from the backend as the client loads them.
    std::vector<FieldValueDTO> valuesFor(const SubmissionJSON& document) {
        std::vector<FieldValueDTO> values;
        collect(*document.submissionId, document.fields, values);
        return values;
    }

    void collect(const QString& submissionId, const std::vector<FieldJSON>& fields,
                 std::vector<FieldValueDTO>& out) {
        for (const FieldJSON& field : fields) {
            if (field.type == FieldType::section) {
                const auto section = awaitResult<SubmissionJSON>(
                    [&](auto done) { TSRNetwork::shared().loadSection(submissionId, *field.key, done); });
                ASSERT_TRUE(section.isSuccess()) << field.key->toStdString();
                collect(submissionId, section.value().fields, out);
            } else if (isEntered(field.type) && answers.contains(*field.key)) {
                out.push_back({*field.key, answers.value(*field.key).toString()});
            }
        }
    }

    // Submits `document` to the direction of its flow button `flowKey`.
    TSRResult<SubmissionJSON> follow(const SubmissionJSON& document, const QString& flowKey,
                                     bool withValues = true) {
        const auto button = std::find_if(document.fields.begin(), document.fields.end(),
                                         [&](const FieldJSON& f) { return f.key == flowKey; });
        EXPECT_NE(button, document.fields.end()) << flowKey.toStdString();
        if (button == document.fields.end())
            return TSRNetworkError::custom(QStringLiteral("no such button"));
        return submit(*document.submissionId, *button->directionId, *document.directionId,
                      withValues ? valuesFor(document) : std::vector<FieldValueDTO>{}, flowKey);
    }

    QJsonObject answers = readAnswers();
};

} // namespace

TEST_F(SamplePass, FromFirstStepToTheClosingScreen) {
    const auto first = start();
    ASSERT_TRUE(first.isSuccess());
    const SubmissionJSON personal = first.value();
    const QString id = personal.submissionId.value_or(QString());
    EXPECT_FALSE(QUuid::fromString(id).isNull()) << id.toStdString();
    EXPECT_EQ(personal.processId, QStringLiteral("credit-request"));
    EXPECT_EQ(personal.directionId, QStringLiteral("personal-data"));

    const auto contact = follow(personal, QStringLiteral("personalDataNext"));
    ASSERT_TRUE(contact.isSuccess());
    EXPECT_EQ(contact.value().directionId, QStringLiteral("contact-data"));
    // A step back sends nothing and answers the earlier step again.
    const auto back = follow(contact.value(), QStringLiteral("contactDataBack"), false);
    ASSERT_TRUE(back.isSuccess());
    EXPECT_EQ(back.value().directionId, QStringLiteral("personal-data"));
    const auto contactAgain = follow(back.value(), QStringLiteral("personalDataNext"));
    ASSERT_TRUE(contactAgain.isSuccess());
    const auto documents = follow(contactAgain.value(), QStringLiteral("contactDataNext"));
    ASSERT_TRUE(documents.isSuccess());
    EXPECT_EQ(documents.value().directionId, QStringLiteral("documents"));

    // The upload goes first, as the form's upload chain sends it.
    QFile pdf(kCreditRequest + QLatin1Char('/') + answers.value(QStringLiteral("incomeDocument")).toString());
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray pdfBytes = pdf.readAll();
    const TSRFile file{pdfBytes, QMimeDatabase().mimeTypeForName(QStringLiteral("application/pdf")),
                       QStringLiteral("sample-income-statement"), false};
    const auto uploaded = awaitResult<void>([&](auto done) {
        TSRNetwork::shared().uploadFile(
            file, UploadFileDTO{id, QStringLiteral("incomeDocument"), QStringLiteral("documents")}, done);
    });
    ASSERT_TRUE(uploaded.isSuccess()) << errorDescription(uploaded.error()).toStdString();

    const auto calculator = follow(documents.value(), QStringLiteral("documentsNext"));
    ASSERT_TRUE(calculator.isSuccess());
    EXPECT_EQ(calculator.value().type, QStringLiteral("CREDIT_CALCULATOR"));
    const auto plan = awaitResult<CreditInstalmentDetailsJSON>([&](auto done) {
        TSRNetwork::shared().fetchInstalmentDetails(InstalmentDetailsDTO{101, Decimal::fromInteger(1000), 12},
                                                    done);
    });
    ASSERT_TRUE(plan.isSuccess());

    const std::vector<FieldValueDTO> credit = {
        {QStringLiteral("creditAmount"), QStringLiteral("1000")},
        {QStringLiteral("monthlyInstalment"), plan.value().instalmentAmount.description()},
        {QStringLiteral("firstInstalmentDate"), QStringLiteral("1767225600000")},
        {QStringLiteral("creditPeriods"), QStringLiteral("12")},
        {QStringLiteral("selectedProductId"), QStringLiteral("101")},
        {QStringLiteral("totalDue"), plan.value().totalDueAmount.description()}};
    const auto kyc = submit(id, *calculator.value().settings->calculatorSubmitDirectionStepId,
                            *calculator.value().directionId, credit);
    ASSERT_TRUE(kyc.isSuccess());
    ASSERT_EQ(kyc.value().type, QStringLiteral("KYC_ID"));
    // The server writes its own address and the submission's user into the verification settings.
    const SubmissionSettings settings = *kyc.value().settings;
    EXPECT_EQ(settings.streamUrl, QUrl(QStringLiteral("ws://127.0.0.1:%1/").arg(server->port())));
    EXPECT_EQ(settings.signallingUrl, settings.streamUrl);
    const QJsonObject midway = demoRecord(id);
    EXPECT_EQ(settings.userHash, midway.value(QStringLiteral("userHash")).toString());

    ASSERT_TRUE(server->setKycStatus(id, QStringLiteral("KYC_STATUS_SELFIE_OK")));

    // The verification screen submits to its own step; the result decides where that leads.
    const auto closing = submit(id, *kyc.value().directionId, *kyc.value().directionId);
    ASSERT_TRUE(closing.isSuccess());
    EXPECT_EQ(closing.value().directionId, QStringLiteral("closing"));

    const QJsonObject record = demoRecord(id);
    QStringList steps;
    for (const auto& step : record.value(QStringLiteral("steps")).toArray())
        steps << step.toString();
    EXPECT_EQ(steps, (QStringList{"personal-data", "contact-data", "personal-data", "contact-data",
                                  "documents", "credit-calculator", "kyc-verification", "closing"}));

    // Values arrive in order, each with the step it was entered on.
    QStringList received;
    for (const auto& value : record.value(QStringLiteral("values")).toArray()) {
        const QJsonObject entry = value.toObject();
        received << entry.value(QStringLiteral("step")).toString() + QLatin1Char(':') +
                        entry.value(QStringLiteral("key")).toString() + QLatin1Char('=') +
                        entry.value(QStringLiteral("value")).toString();
    }
    ASSERT_FALSE(received.isEmpty());
    EXPECT_EQ(received.last(),
              QStringLiteral("credit-calculator:totalDue=") + plan.value().totalDueAmount.description());
    EXPECT_EQ(received.count(QStringLiteral("personal-data:egn=7501020018")),
              2); // sent twice: the user went back

    // The file the client named without an extension is kept under the name the client sent.
    const QJsonArray uploads = record.value(QStringLiteral("uploads")).toArray();
    ASSERT_EQ(uploads.size(), 1);
    EXPECT_EQ(uploads.first().toObject().value(QStringLiteral("fileName")).toString(),
              QStringLiteral("sample-income-statement.PDF"));
}

TEST_F(SamplePass, SectionsAnswerAsAOneElementList) {
    const auto first = start();
    ASSERT_TRUE(first.isSuccess());
    const auto list = awaitResult<std::vector<SubmissionJSON>>([&](auto done) {
        TSRNetwork::shared().loadSectionList(*first.value().submissionId, QStringLiteral("spouseData"), done);
    });
    ASSERT_TRUE(list.isSuccess());
    ASSERT_EQ(list.value().size(), 1u);
    const auto& fields = list.value().front().fields;
    ASSERT_FALSE(fields.empty());
    EXPECT_EQ(fields.front().type, FieldType::group);
    EXPECT_EQ(fields.front().condition->sectionKey, QStringLiteral("spouseData"));
}
