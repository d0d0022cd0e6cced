// The sample processes stay within what the SDK accepts, and the demo's answers stay valid for them.
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionContainer.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/form/LocalStepDocument.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>
#include <map>
#include <set>

using namespace tessara;

namespace {

const QString kProcesses = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes");
const QString kCreditRequest = kProcesses + QStringLiteral("/credit-request");

QByteArray read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

// A process's documents by file path, decoded by the SDK. Placeholders the server fills in at
// answer time get plausible values first.
std::map<QString, SubmissionJSON> documentsOf(const QString& processDir) {
    std::map<QString, SubmissionJSON> documents;
    for (const char* folder : {"steps", "sections"}) {
        QDirIterator it(processDir + QLatin1Char('/') + QLatin1String(folder), {QStringLiteral("*.json")},
                        QDir::Files);
        while (it.hasNext()) {
            const QString path = it.next();
            QByteArray bytes = read(path);
            bytes.replace("{{host}}", "127.0.0.1:8080")
                .replace("{{submissionId}}", "s")
                .replace("{{userHash}}", "u");
            const auto document = decodeDocument<SubmissionJSON>(bytes);
            EXPECT_TRUE(document.has_value()) << path.toStdString() << " does not decode";
            if (document)
                documents.emplace(path, *document);
        }
    }
    return documents;
}

std::vector<const FieldJSON*> allFields(const std::map<QString, SubmissionJSON>& documents) {
    std::vector<const FieldJSON*> fields;
    for (const auto& [path, document] : documents) {
        for (const FieldJSON& field : document.fields)
            fields.push_back(&field);
    }
    return fields;
}

} // namespace

// Whether each answer is accepted is for the demo runs to show; here: no key twice in the whole
// process, and no answer for a field that does not exist.
TEST(SampleProcesses, CreditRequestKeysAreUniqueAndEveryAnswerHasItsField) {
    const QJsonObject answers =
        QJsonDocument::fromJson(read(kCreditRequest + QStringLiteral("/answers.json"))).object();
    ASSERT_FALSE(answers.isEmpty());
    // Hidden calculator values the user decides on screen are answered; other hidden fields are not.
    static const QStringList decided{"CHOOSE_PRODUCT", "AMOUNT", "PERIODS", "INSTALLMENT_DATE"};
    const auto documents = documentsOf(kCreditRequest);
    std::set<QString> keys;
    std::set<QString> unanswerable;
    for (const FieldJSON* field : allFields(documents)) {
        ASSERT_TRUE(field->key.has_value()) << rawValue(field->type).toStdString();
        EXPECT_TRUE(keys.insert(*field->key).second) << "key used twice: " << field->key->toStdString();
        if (field->isHidden.value_or(false) && !decided.contains(field->specialType.value_or(QString())))
            unanswerable.insert(*field->key);
    }
    for (const QString& key : answers.keys())
        EXPECT_TRUE(keys.count(key) && !unanswerable.count(key))
            << "answer for no field: " << key.toStdString();
    EXPECT_TRUE(keys.count(QStringLiteral("creditProduct")));
}

TEST(SampleProcesses, CreditRequestShowsEveryKindOfFormElement) {
    const auto documents = documentsOf(kCreditRequest);
    const auto fields = allFields(documents);
    std::set<FieldType> types;
    std::set<QString> operators;
    bool requiredCheckbox = false, optionalCheckbox = false, popup = false, positioned = false,
         closing = false;
    for (const FieldJSON* field : fields) {
        types.insert(field->type);
        if (field->condition && field->condition->groupOperator)
            operators.insert(rawValue(*field->condition->groupOperator));
        if (field->type == FieldType::checkbox)
            (field->isRequired.value_or(false) ? requiredCheckbox : optionalCheckbox) = true;
        popup |= field->specialType == QLatin1String("POPUP");
        positioned |= field->styleClass.value_or(QString()).contains(QLatin1String("position-"));
        closing |= field->styleClass.value_or(QString()).toLower().contains(QLatin1String("a1"));
        // The consent's link opens a step document the SDK ships with.
        if (field->type == FieldType::consent) {
            ASSERT_TRUE(field->directionId.has_value());
            const auto local = LocalStepDocument::load(*field->directionId);
            ASSERT_TRUE(local.has_value()) << field->directionId->toStdString();
            EXPECT_TRUE(decodeDocument<SubmissionContainer>(*local).has_value());
        }
    }
    for (FieldType type : {FieldType::text, FieldType::newLine, FieldType::horizontalLine,
                           FieldType::inputField, FieldType::inputArea, FieldType::checkbox,
                           FieldType::radioButtons, FieldType::dropdown, FieldType::flowButton,
                           FieldType::section, FieldType::group, FieldType::consent, FieldType::uploadFile,
                           FieldType::hint, FieldType::link, FieldType::nomenclature, FieldType::date}) {
        EXPECT_TRUE(types.count(type)) << rawValue(type).toStdString();
    }
    EXPECT_EQ(operators, (std::set<QString>{QStringLiteral("EQUAL"), QStringLiteral("NOT_EQ")}));
    EXPECT_TRUE(requiredCheckbox && optionalCheckbox && popup && positioned && closing);
}
