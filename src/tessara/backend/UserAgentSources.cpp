#include "tessara/backend/UserAgentSources.h"

#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <sys/utsname.h>

namespace tessara {

namespace {

QString readHardwareModel() {
    utsname system{};
    if (uname(&system) != 0 || system.machine[0] == '\0')
        fatalError(QStringLiteral("The hardware model could not be read."));
    return QString::fromLocal8Bit(system.machine);
}

} // namespace

UserAgentSources UserAgentSources::current() {
    UserAgentSources sources;
    sources.hardwareModel = readHardwareModel();
    sources.systemName = QSysInfo::productType();
    sources.systemVersion = QSysInfo::productVersion();
    sources.applicationName = QCoreApplication::applicationName();
    sources.applicationVersion = QCoreApplication::applicationVersion();
    sources.applicationIdentifier = QCoreApplication::organizationDomain();
    sources.applicationBuild = HostHooks::instance().appBuildNumber;
    sources.frameworkVersion = QStringLiteral(TESSARA_VERSION);
    sources.frameworkBuild = QStringLiteral(TESSARA_BUILD_NUMBER);
    return sources;
}

QString UserAgentSources::text() const {
    QString name;
    for (const QChar c : applicationName) {
        if (!c.isSpace())
            name.append(c);
    }
    return hardwareModel + QLatin1Char('/') + systemName + systemVersion + QLatin1Char(' ') + name +
           QLatin1Char('/') + applicationVersion + QStringLiteral(" (") + applicationIdentifier +
           QLatin1Char('/') + applicationBuild + QStringLiteral(") TessaraSDK/") + frameworkVersion +
           QLatin1Char('(') + frameworkBuild + QLatin1Char(')');
}

} // namespace tessara
