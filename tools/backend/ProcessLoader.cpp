#include "backend/ProcessLoader.h"

#include "backend/StepRenderer.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <nlohmann/json.hpp>

namespace tessara {

namespace {

using nlohmann::json;

std::optional<QByteArray> readFile(const QString& path, QStringList& errors) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errors << QStringLiteral("%1: cannot be read (%2)").arg(path, file.errorString());
        return std::nullopt;
    }
    return file.readAll();
}

// Parses JSON, reporting a syntax error with its position.
std::optional<json> parseJson(const QByteArray& bytes, QString* error) {
    try {
        return json::parse(bytes.begin(), bytes.end());
    } catch (const json::parse_error& e) {
        // e.what() reads "[json.exception.parse_error.101] parse error at line 3, column 5: ...".
        QString text = QString::fromUtf8(e.what());
        const qsizetype cut = text.indexOf(QLatin1String("] "));
        *error = QStringLiteral("is not valid JSON: %1").arg(cut < 0 ? text : text.mid(cut + 2));
        return std::nullopt;
    }
}

// Reads and parses one definition file; every failure is reported with the file's path.
std::optional<json> readJsonFile(const QString& path, const std::optional<QByteArray>& bytes,
                                 QStringList& errors) {
    if (!bytes)
        return std::nullopt;
    QString syntax;
    auto root = parseJson(*bytes, &syntax);
    if (!root)
        errors << QStringLiteral("%1 %2").arg(path, syntax);
    return root;
}

QString quoted(const std::string& text) {
    return QLatin1Char('"') + QString::fromStdString(text) + QLatin1Char('"');
}

QString describeField(const json& field, size_t index) {
    QString where = QStringLiteral("field %1").arg(index + 1);
    if (field.is_object()) {
        if (auto key = field.find("key"); key != field.end() && key->is_string())
            where += QStringLiteral(" (key %1)").arg(quoted(key->get<std::string>()));
        else if (auto type = field.find("type"); type != field.end() && type->is_string())
            where += QStringLiteral(" (type %1)").arg(quoted(type->get<std::string>()));
    }
    return where;
}

QByteArray dumped(const json& value) {
    return QByteArray::fromStdString(value.dump(-1, ' ', false, json::error_handler_t::replace));
}

// Reads the strict format of process.json into `process`.
void readProcessFile(const QString& path, ProcessDefinition& process, QStringList& errors) {
    const auto root = readJsonFile(path, readFile(path, errors), errors);
    if (!root)
        return;
    if (!root->is_object()) {
        errors << QStringLiteral("%1: must hold a JSON object").arg(path);
        return;
    }
    const auto requireString = [&](const char* key, bool required) -> QString {
        const auto it = root->find(key);
        if (it == root->end()) {
            if (required)
                errors << QStringLiteral("%1: \"%2\" is missing").arg(path, QLatin1String(key));
            return {};
        }
        if (!it->is_string() || it->get<std::string>().empty()) {
            errors << QStringLiteral("%1: \"%2\" must be a non-empty string").arg(path, QLatin1String(key));
            return {};
        }
        return QString::fromStdString(it->get<std::string>());
    };
    process.processId = requireString("processId", true);
    process.name = requireString("name", false);
    process.firstStep = requireString("firstStep", true);
    if (root->contains("verificationScript")) {
        const QString script = requireString("verificationScript", false);
        if (!script.isEmpty() && !VerificationScript::named(script))
            errors << QStringLiteral("%1: \"verificationScript\" must be one of %2")
                          .arg(path, VerificationScript::names().join(QStringLiteral(", ")));
        if (!script.isEmpty())
            process.verificationScript = script;
    }

    for (auto it = root->begin(); it != root->end(); ++it) {
        if (it.key() != "processId" && it.key() != "name" && it.key() != "firstStep" &&
            it.key() != "kycRoutes" && it.key() != "verificationScript")
            errors << QStringLiteral("%1: unknown key %2").arg(path, quoted(it.key()));
    }

    const auto routes = root->find("kycRoutes");
    if (routes == root->end())
        return;
    if (!routes->is_object()) {
        errors << QStringLiteral("%1: \"kycRoutes\" must be an object of step ids").arg(path);
        return;
    }
    for (auto step = routes->begin(); step != routes->end(); ++step) {
        if (!step->is_object()) {
            errors << QStringLiteral("%1: kycRoutes.%2 must be an object from status word to step id")
                          .arg(path, QString::fromStdString(step.key()));
            continue;
        }
        auto& table = process.kycRoutes[QString::fromStdString(step.key())];
        for (auto route = step->begin(); route != step->end(); ++route) {
            if (!route->is_string() || route->get<std::string>().empty()) {
                errors << QStringLiteral("%1: kycRoutes.%2.%3 must be a step id")
                              .arg(path, QString::fromStdString(step.key()),
                                   QString::fromStdString(route.key()));
                continue;
            }
            table[QString::fromStdString(route.key())] = QString::fromStdString(route->get<std::string>());
        }
    }
}

// Reads every *.json of `folder` as a step document, keyed by its file name.
std::map<QString, StepDefinition> readDocuments(const QString& folder, QStringList& errors) {
    std::map<QString, StepDefinition> documents;
    const QDir dir(folder);
    const auto files = dir.entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QFileInfo& info : files) {
        const QString path = info.filePath();
        const auto bytes = readFile(path, errors);
        if (!bytes)
            continue;
        StepDefinition definition;
        definition.id = info.completeBaseName();
        definition.filePath = path;
        definition.source = *bytes;
        const QByteArray expanded = StepRenderer::expand(*bytes, StepRenderer::standIn());
        const auto document = decodeDocument<SubmissionJSON>(expanded);
        if (!document) {
            errors << QStringLiteral("%1: %2").arg(path, ProcessLoader::describeStepFailure(expanded));
            continue;
        }
        definition.document = *document;
        documents.emplace(definition.id, std::move(definition));
    }
    return documents;
}

void readProducts(const QString& path, ProcessDefinition& process, QStringList& errors) {
    const auto bytes = readFile(path, errors);
    if (!bytes)
        return;
    if (auto products = decodeDocument<std::vector<CreditProductJSON>>(*bytes)) {
        process.products = std::move(*products);
        return;
    }
    const auto root = readJsonFile(path, bytes, errors);
    if (!root)
        return;
    if (!root->is_array()) {
        errors << QStringLiteral("%1: must hold a JSON array of credit products").arg(path);
        return;
    }
    for (size_t i = 0; i < root->size(); ++i) {
        if (!decodeDocument<CreditProductJSON>(dumped((*root)[i]))) {
            errors << QStringLiteral(
                          "%1: product %2 does not decode as a credit product (required: productId, "
                          "productName, productPeriodicity, productType, minPrincipal, maxPrincipal, "
                          "periods with period, minPrincipal, maxPrincipal)")
                          .arg(path)
                          .arg(i + 1);
            return;
        }
    }
    errors << QStringLiteral("%1: does not decode as a list of credit products").arg(path);
}

} // namespace

QString ProcessLoader::describeStepFailure(const QByteArray& bytes) {
    QString syntax;
    const auto root = parseJson(bytes, &syntax);
    if (!root)
        return syntax;
    if (!root->is_object())
        return QStringLiteral("a step document must be a JSON object");
    const auto fields = root->find("fields");
    if (fields == root->end() || fields->is_null())
        return QStringLiteral("\"fields\" is missing (an empty form still needs \"fields\": [])");
    if (!fields->is_array())
        return QStringLiteral("\"fields\" must be an array");
    for (size_t i = 0; i < fields->size(); ++i) {
        if (!decodeDocument<FieldJSON>(dumped((*fields)[i])))
            return QStringLiteral(
                       "%1 does not decode: check its \"type\", option ids and values, the condition's "
                       "\"operator\", and that every value has the right JSON type")
                .arg(describeField((*fields)[i], i));
    }
    if (const auto settings = root->find("settings"); settings != root->end() && !settings->is_null()) {
        if (!decodeDocument<SubmissionSettings>(dumped(*settings)))
            return QStringLiteral("\"settings\" does not decode: its values must be strings, \"products\" a "
                                  "list, and \"signallingUrl\"/\"streamUrl\" valid absolute URLs");
    }
    for (const char* key : {"type", "name", "submissionId", "directionId", "processId"}) {
        const auto it = root->find(key);
        if (it != root->end() && !it->is_null() && !it->is_string())
            return QStringLiteral("\"%1\" must be a string").arg(QLatin1String(key));
    }
    return QStringLiteral("\"creditProducts\" or \"instalmentDetails\" does not decode");
}

ProcessLoadResult ProcessLoader::load(const QString& directory) {
    ProcessLoadResult result;
    ProcessDefinition process;
    process.directory = QDir(directory).absolutePath();
    const QDir dir(process.directory);

    readProcessFile(dir.filePath(QLatin1String(kProcessFile)), process, result.errors);
    process.steps = readDocuments(dir.filePath(QLatin1String(kStepsFolder)), result.errors);
    process.sections = readDocuments(dir.filePath(QLatin1String(kSectionsFolder)), result.errors);
    if (process.steps.empty() && !QDir(dir.filePath(QLatin1String(kStepsFolder))).exists())
        result.errors << QStringLiteral("%1: has no \"%2\" folder of step documents")
                             .arg(process.directory, QLatin1String(kStepsFolder));
    const QString productsPath = dir.filePath(QLatin1String(kProductsFile));
    if (QFileInfo::exists(productsPath))
        readProducts(productsPath, process, result.errors);

    // A document that names its own direction id must agree with its file name, or the client
    // would be told one id and asked for another.
    for (const auto& [id, step] : process.steps) {
        if (step.document.directionId && *step.document.directionId != id)
            result.errors << QStringLiteral("%1: \"directionId\" is \"%2\" but the file name gives \"%3\"")
                                 .arg(step.filePath, *step.document.directionId, id);
    }

    if (result.errors.isEmpty())
        result.process = std::move(process);
    return result;
}

} // namespace tessara
