#pragma once

#include "backend/VerificationScript.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/SubmissionJSON.h"

#include <QByteArray>
#include <QString>
#include <map>
#include <vector>

namespace tessara {

// One step or section document of a process, as its file holds it.
struct StepDefinition {
    QString id; // the direction id of a step, the key of a section
    QString filePath;
    QByteArray source; // the file's bytes, placeholders unexpanded
    // The document decoded with stand-in placeholder values: what the checks and lookups read.
    SubmissionJSON document;
};

// A process as loaded from its directory (see tools/backend/README.md for the files).
struct ProcessDefinition {
    QString processId;
    QString name;
    QString directory;
    QString firstStep;
    std::map<QString, StepDefinition> steps;    // by direction id
    std::map<QString, StepDefinition> sections; // by key
    std::vector<CreditProductJSON> products;
    // KYC_ID step -> verification status word -> the step that leaving the verification leads to.
    std::map<QString, std::map<QString, QString>> kycRoutes;
    // What the verification simulator does with this process's users (see VerificationScript).
    QString verificationScript = VerificationScript::defaultName();

    const StepDefinition* step(const QString& directionId) const {
        const auto it = steps.find(directionId);
        return it == steps.end() ? nullptr : &it->second;
    }
    const StepDefinition* section(const QString& key) const {
        const auto it = sections.find(key);
        return it == sections.end() ? nullptr : &it->second;
    }
    // The field `key` as the screen of step `directionId` shows it: among the step's fields or,
    // recursively, those of its sections. Null when there is none.
    const FieldJSON* findField(const QString& directionId, const QString& key) const;
};

} // namespace tessara
