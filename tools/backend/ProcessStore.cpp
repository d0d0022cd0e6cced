#include "backend/ProcessStore.h"

#include "backend/ProcessLoader.h"
#include "backend/ProcessValidator.h"

#include <QDir>
#include <QFileInfo>

namespace tessara {

QStringList ProcessStore::load(const QString& directory) {
    const QDir root(directory);
    if (!root.exists())
        return {QStringLiteral("%1: no such directory").arg(directory)};

    QStringList folders;
    if (QFileInfo::exists(root.filePath(QLatin1String(ProcessLoader::kProcessFile)))) {
        folders << root.absolutePath();
    } else {
        for (const QFileInfo& info : root.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            if (QFileInfo::exists(QDir(info.filePath()).filePath(QLatin1String(ProcessLoader::kProcessFile))))
                folders << info.absoluteFilePath();
        }
    }
    if (folders.isEmpty())
        return {
            QStringLiteral("%1: holds no process.json, neither itself nor in a subfolder").arg(directory)};

    QStringList errors;
    std::map<QString, ProcessDefinition> loaded;
    for (const QString& folder : folders) {
        ProcessLoadResult result = ProcessLoader::load(folder);
        if (!result.process) {
            errors << result.errors;
            continue;
        }
        errors << ProcessValidator::check(*result.process);
        const QString id = result.process->processId;
        if (const auto it = loaded.find(id); it != loaded.end()) {
            errors << QStringLiteral("%1: processId \"%2\" is also used by %3")
                          .arg(folder, id, it->second.directory);
            continue;
        }
        loaded.emplace(id, std::move(*result.process));
    }
    if (!errors.isEmpty())
        return errors;

    // Earlier processes stay unless this load brings a process of the same id.
    std::map<QString, ProcessDefinition> combined = processes_;
    for (auto& [id, process] : loaded)
        combined.insert_or_assign(id, std::move(process));
    std::vector<CreditProductJSON> products;
    errors = mergeProducts(combined, products);
    if (!errors.isEmpty())
        return errors;
    processes_ = std::move(combined);
    products_ = std::move(products);
    return {};
}

QStringList ProcessStore::mergeProducts(const std::map<QString, ProcessDefinition>& processes,
                                        std::vector<CreditProductJSON>& merged) {
    QStringList errors;
    std::map<qint64, QString> owner;
    for (const auto& [id, process] : processes) {
        for (const CreditProductJSON& product : process.products) {
            const auto same = std::find_if(merged.begin(), merged.end(), [&](const CreditProductJSON& p) {
                return p.productId == product.productId;
            });
            if (same == merged.end()) {
                merged.push_back(product);
                owner[product.productId] = process.directory;
            } else if (!(*same == product)) {
                // One product list is served to every process, so an id must mean one product.
                errors << QStringLiteral(
                              "%1/products.json: product %2 differs from the product of the same id in "
                              "%3/products.json")
                              .arg(process.directory)
                              .arg(product.productId)
                              .arg(owner[product.productId]);
            }
        }
    }
    return errors;
}

const ProcessDefinition* ProcessStore::process(const QString& processId) const {
    const auto it = processes_.find(processId);
    return it == processes_.end() ? nullptr : &it->second;
}

std::vector<const ProcessDefinition*> ProcessStore::processes() const {
    std::vector<const ProcessDefinition*> result;
    for (const auto& [id, process] : processes_)
        result.push_back(&process);
    return result;
}

const CreditProductJSON* ProcessStore::product(qint64 productId) const {
    for (const CreditProductJSON& product : products_) {
        if (product.productId == productId)
            return &product;
    }
    return nullptr;
}

} // namespace tessara
