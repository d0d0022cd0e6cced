#include "backend/ProcessDefinition.h"

#include <QStringList>

namespace tessara {

namespace {

const FieldJSON* findIn(const ProcessDefinition& process, const StepDefinition& document, const QString& key,
                        QStringList& chain) {
    for (const FieldJSON& field : document.document.fields) {
        if (field.key == key)
            return &field;
        if (field.type != FieldType::section || !field.key || chain.contains(*field.key))
            continue;
        if (const StepDefinition* section = process.section(*field.key)) {
            chain << *field.key;
            const FieldJSON* found = findIn(process, *section, key, chain);
            chain.removeLast();
            if (found)
                return found;
        }
    }
    return nullptr;
}

} // namespace

const FieldJSON* ProcessDefinition::findField(const QString& directionId, const QString& key) const {
    const StepDefinition* document = step(directionId);
    if (!document)
        return nullptr;
    QStringList chain;
    return findIn(*this, *document, key, chain);
}

} // namespace tessara
