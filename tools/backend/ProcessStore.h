#pragma once

#include "backend/ProcessDefinition.h"

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

namespace tessara {

// The process definitions a server offers, and the credit products they bring.
class ProcessStore {
public:
    // Loads `directory`: one process (it holds process.json) or a folder of process folders.
    // All or nothing: on any problem nothing changes and the problems are returned, each naming
    // its file. A process id that is already loaded is replaced, so a second call can reload.
    [[nodiscard]] QStringList load(const QString& directory);

    const ProcessDefinition* process(const QString& processId) const;
    std::vector<const ProcessDefinition*> processes() const;

    // The products of all processes, in the order their files list them; a product that two
    // processes share appears once.
    const std::vector<CreditProductJSON>& products() const { return products_; }
    const CreditProductJSON* product(qint64 productId) const;

private:
    // The union of the processes' products, or the conflicts that forbid it.
    static QStringList mergeProducts(const std::map<QString, ProcessDefinition>& processes,
                                     std::vector<CreditProductJSON>& merged);

    std::map<QString, ProcessDefinition> processes_;
    std::vector<CreditProductJSON> products_;
};

} // namespace tessara
