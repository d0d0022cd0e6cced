#include <QApplication>
#include <QColor>
#include <QFile>
#include <QJsonDocument>
#include <QUrl>
#include <cstdio>
#include <memory>
#include <tessara/api/Tessara.h>
#include <tessara/appearance/TSRAppearance.h>

// A static library's resources are registered by name from the host's side.
static void registerSdkResources() {
    Q_INIT_RESOURCE(tessara);
}

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    registerSdkResources();

    auto look = std::make_shared<tessara::TSRAppearance>();
    look->setTintColor(QColor("#0f6b5c"));
    tessara::Tessara sdk(QUrl("http://127.0.0.1:9"), look);
    if (tessara::Tessara::appearance() != look) {
        std::fprintf(stderr, "the SDK did not take the host's appearance\n");
        return 1;
    }

    QFile terms(":/tessara/consent-terms.json");
    if (!terms.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "bundled step document not reachable\n");
        return 1;
    }
    if (!QJsonDocument::fromJson(terms.readAll()).isObject()) {
        std::fprintf(stderr, "bundled step document is not a JSON object\n");
        return 1;
    }
    std::puts("host ok");
    return 0;
}
