#include "TessaraTool.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessara"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TESSARA_TOOL_VERSION));
    QCoreApplication::setOrganizationDomain(QStringLiteral("com.tessara.cli"));
    return tessara::tool::TessaraTool(QCoreApplication::arguments()).run();
}
