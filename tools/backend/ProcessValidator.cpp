#include "backend/ProcessValidator.h"

#include "tessara/documents/FieldType.h"
#include "tessara/documents/SpecialType.h"
#include "tessara/form/ValidationPattern.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace tessara {

namespace {

// A field together with where it was written.
struct LocatedField {
    const FieldJSON* field;
    const StepDefinition* file;
    size_t index;       // position in its document, from 0
    QString sectionKey; // the section it belongs to, empty at the top level
};

QString where(const LocatedField& located) {
    QString text = QStringLiteral("%1: field %2").arg(located.file->filePath).arg(located.index + 1);
    if (located.field->key)
        text += QStringLiteral(" (key \"%1\")").arg(*located.field->key);
    else
        text += QStringLiteral(" (%1)").arg(rawValue(located.field->type));
    return text;
}

bool becomesControl(FieldType type) {
    // The form skips these three; every other field is a control that needs a key.
    return type != FieldType::newLine && type != FieldType::group && type != FieldType::submitButton;
}

bool announcesValue(FieldType type) {
    return type == FieldType::checkbox || type == FieldType::radioButtons || type == FieldType::dropdown ||
           type == FieldType::nomenclature;
}

bool isSpecial(const FieldJSON& field, SpecialType special) {
    return field.specialType && *field.specialType == rawValue(special);
}

class Checker {
public:
    explicit Checker(const ProcessDefinition& process)
        : process_(process) {}

    QStringList run() {
        if (!process_.firstStep.isEmpty() && !process_.step(process_.firstStep))
            fail(QStringLiteral("%1/process.json: \"firstStep\" names \"%2\", which is no file in steps/")
                     .arg(process_.directory, process_.firstStep));
        for (const auto& [id, step] : process_.steps)
            checkStep(step);
        checkKycRoutes();
        checkProducts();
        errors_.removeDuplicates();
        return errors_;
    }

private:
    void fail(const QString& message) { errors_ << message; }

    void requireStep(const StepDefinition& file, const char* what, const std::optional<QString>& id) {
        if (id && !process_.step(*id))
            fail(QStringLiteral("%1: %2 names \"%3\", which is no step of this process")
                     .arg(file.filePath, QLatin1String(what), *id));
    }

    // The fields of one screen: the step's own and, recursively, those of its sections.
    void collect(const StepDefinition& document, const QString& sectionKey, QStringList& chain,
                 std::vector<LocatedField>& out) {
        const auto& fields = document.document.fields;
        for (size_t i = 0; i < fields.size(); ++i) {
            const FieldJSON& field = fields[i];
            out.push_back({&field, &document, i, sectionKey});
            if (field.type != FieldType::section || !field.key)
                continue;
            const StepDefinition* section = process_.section(*field.key);
            if (!section) {
                fail(QStringLiteral("%1: section \"%2\" has no file sections/%2.json")
                         .arg(document.filePath, *field.key));
            } else if (chain.contains(*field.key)) {
                fail(QStringLiteral("%1: section \"%2\" contains itself, so loading it would never end")
                         .arg(section->filePath, *field.key));
            } else {
                chain.push_back(*field.key);
                collect(*section, *field.key, chain, out);
                chain.pop_back();
            }
        }
    }

    void checkStep(const StepDefinition& step) {
        const SubmissionJSON& document = step.document;
        if (!document.type)
            fail(QStringLiteral("%1: \"type\" is missing; the client cannot choose a screen without it")
                     .arg(step.filePath));

        std::vector<LocatedField> fields;
        QStringList chain;
        collect(step, QString(), chain, fields);

        QHash<QString, const LocatedField*> byKey;
        for (const LocatedField& located : fields) {
            const FieldJSON& field = *located.field;
            if (!field.key) {
                if (becomesControl(field.type))
                    fail(where(located) +
                         QStringLiteral(": has no \"key\"; the client cannot show it without one"));
                continue;
            }
            if (const LocatedField* first = byKey.value(*field.key)) {
                fail(where(located) + QStringLiteral(": the key is used twice on step \"%1\" (first in %2)")
                                          .arg(step.id, first->file->filePath));
                continue;
            }
            byKey.insert(*field.key, &located);
        }
        for (const LocatedField& located : fields)
            checkField(step, located, byKey);

        if (document.type == QLatin1String("CREDIT_CALCULATOR"))
            checkCalculator(step, fields);
        else if (document.type == QLatin1String("KYC_ID"))
            checkVerification(step);
    }

    void checkField(const StepDefinition& step, const LocatedField& located,
                    const QHash<QString, const LocatedField*>& byKey) {
        const FieldJSON& field = *located.field;
        switch (field.type) {
        case FieldType::radioButtons:
        case FieldType::dropdown:
        case FieldType::nomenclature:
            if (!field.options || field.options->empty())
                fail(where(located) + QStringLiteral(": a choice field needs \"options\""));
            break;
        case FieldType::uploadFile:
            if (!field.maximumFileSize)
                fail(where(located) + QStringLiteral(": an upload needs \"maxSize\" (in MB)"));
            if (!field.allowedFileExtensions || field.allowedFileExtensions->empty())
                fail(where(located) + QStringLiteral(": an upload needs \"allowedExt\""));
            break;
        case FieldType::inputField:
        case FieldType::inputArea:
            if (field.validation && !field.validation->isEmpty() &&
                !ValidationPattern(*field.validation).isValid())
                fail(where(located) +
                     QStringLiteral(": \"validation\" is no valid regular expression, so the "
                                    "field could never be submitted"));
            break;
        case FieldType::flowButton:
            if (isSpecial(field, SpecialType::popup)) {
                if (!field.fieldId || !field.consentContent || field.consentContent->empty())
                    fail(where(located) +
                         QStringLiteral(": a popup button needs \"fieldId\" and \"consentContent\""));
            } else if (step.document.type != QLatin1String("CREDIT_CALCULATOR")) {
                if (!field.directionId)
                    fail(where(located) + QStringLiteral(": a flow button needs \"directionId\""));
                else if (!process_.step(*field.directionId))
                    fail(where(located) +
                         QStringLiteral(": \"directionId\" names \"%1\", which is no step of "
                                        "this process")
                             .arg(*field.directionId));
            }
            break;
        case FieldType::link:
            if (!field.value || field.value->isEmpty())
                fail(where(located) + QStringLiteral(": a link needs the address in \"value\""));
            break;
        case FieldType::group:
            if (field.condition)
                checkCondition(located, byKey);
            break;
        default:
            break;
        }
    }

    void checkCondition(const LocatedField& located, const QHash<QString, const LocatedField*>& byKey) {
        const GroupControlConditionJSON& condition = *located.field->condition;
        if (!condition.groupOperator || !condition.shouldHide)
            fail(where(located) + QStringLiteral(": a visibility rule needs both \"operator\" and \"hide\""));
        if (condition.sectionKey.value_or(QString()) != located.sectionKey)
            fail(where(located) + QStringLiteral(": the rule's \"sectionKey\" must be \"%1\", the section it "
                                                 "sits in, or it never applies")
                                      .arg(located.sectionKey));
        if (!condition.fieldKey) {
            fail(where(located) + QStringLiteral(": the rule needs the \"fieldKey\" it watches"));
            return;
        }
        const LocatedField* watched = byKey.value(*condition.fieldKey);
        if (!watched || !announcesValue(watched->field->type))
            fail(where(located) +
                 QStringLiteral(": the rule watches \"%1\", which is no checkbox, radio, dropdown "
                                "or nomenclature on the same step")
                     .arg(*condition.fieldKey));
    }

    void checkCalculator(const StepDefinition& step, const std::vector<LocatedField>& fields) {
        const auto& settings = step.document.settings;
        if (!settings) {
            fail(QStringLiteral("%1: a calculator step needs \"settings\"").arg(step.filePath));
            return;
        }
        if (!settings->calculatorSubmitDirectionStepId)
            fail(QStringLiteral("%1: a calculator step needs settings.calculatorSubmitDirectionStepId")
                     .arg(step.filePath));
        requireStep(step, "settings.calculatorSubmitDirectionStepId",
                    settings->calculatorSubmitDirectionStepId);
        qsizetype offered = 0;
        if (settings->products) {
            for (const auto& item : *settings->products) {
                bool ok = false;
                const qint64 id = item.itemValue.value_or(QString()).toLongLong(&ok);
                const bool known =
                    ok && std::any_of(process_.products.begin(), process_.products.end(),
                                      [id](const CreditProductJSON& p) { return p.productId == id; });
                if (!known)
                    fail(QStringLiteral(
                             "%1: settings.products names \"%2\", which is no product in products.json")
                             .arg(step.filePath, item.itemValue.value_or(QString())));
                else
                    ++offered;
            }
            if (offered == 0)
                fail(QStringLiteral("%1: settings.products keeps no product, so the calculator cannot start")
                         .arg(step.filePath));
        } else if (process_.products.empty()) {
            fail(QStringLiteral("%1: a calculator step needs products.json").arg(step.filePath));
        }
        if (settings->endUserCreditProductSelection == QLatin1String("true") && offered > 1) {
            const bool hasChooser =
                std::any_of(fields.begin(), fields.end(), [](const LocatedField& located) {
                    return isSpecial(*located.field, SpecialType::chooseProduct) && located.field->key;
                });
            if (!hasChooser)
                fail(QStringLiteral("%1: product selection by the user needs a field with specialType "
                                    "\"CHOOSE_PRODUCT\" and a key")
                         .arg(step.filePath));
        }
    }

    void checkVerification(const StepDefinition& step) {
        const auto& settings = step.document.settings;
        if (!settings || !settings->userHash || !settings->streamUrl) {
            fail(QStringLiteral("%1: a KYC_ID step needs settings.userHash and settings.streamUrl")
                     .arg(step.filePath));
            return;
        }
        requireStep(step, "settings.failedNoVideoStream", settings->failedNoVideoStream);
        requireStep(step, "settings.noServiceDirectionStepId", settings->noServiceDirectionStepId);
        requireStep(step, "settings.idBackFailDirectionStepId", settings->idBackFailDirectionStepId);
        requireStep(step, "settings.idFaceFailDirectionStepId", settings->idFaceFailDirectionStepId);
        requireStep(step, "settings.livenessFailDirectionStepId", settings->livenessFailDirectionStepId);
        requireStep(step, "settings.noCameraAccessDirectionStepId", settings->noCameraAccessDirectionStepId);
        requireStep(step, "settings.noCameraDirectionId", settings->noCameraDirectionId);
        requireStep(step, "settings.noFaceDirectionStepId", settings->noFaceDirectionStepId);
    }

    void checkKycRoutes() {
        const QString file = process_.directory + QStringLiteral("/process.json");
        for (const auto& [stepId, routes] : process_.kycRoutes) {
            const StepDefinition* step = process_.step(stepId);
            if (!step || step->document.type != QLatin1String("KYC_ID"))
                fail(QStringLiteral("%1: kycRoutes names \"%2\", which is no KYC_ID step").arg(file, stepId));
            for (const auto& [word, target] : routes) {
                if (!process_.step(target))
                    fail(QStringLiteral("%1: kycRoutes.%2.%3 names \"%4\", which is no step of this process")
                             .arg(file, stepId, word, target));
            }
        }
    }

    void checkProducts() {
        const QString file = process_.directory + QStringLiteral("/products.json");
        QSet<qint64> seen;
        for (const CreditProductJSON& product : process_.products) {
            if (seen.contains(product.productId))
                fail(QStringLiteral("%1: productId %2 is used twice").arg(file).arg(product.productId));
            seen.insert(product.productId);
            if (product.periods.empty())
                fail(QStringLiteral("%1: product %2 offers no periods").arg(file).arg(product.productId));
            for (const auto& period : product.periods) {
                if (period.period < 1 || period.maxPrincipal < period.minPrincipal ||
                    period.minPrincipal <= Decimal())
                    fail(
                        QStringLiteral("%1: product %2, period %3: needs period >= 1 and 0 < minPrincipal <= "
                                       "maxPrincipal")
                            .arg(file)
                            .arg(product.productId)
                            .arg(period.period));
            }
        }
    }

    const ProcessDefinition& process_;
    QStringList errors_;
};

} // namespace

QStringList ProcessValidator::check(const ProcessDefinition& process) {
    return Checker(process).run();
}

} // namespace tessara
