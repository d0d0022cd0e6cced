#pragma once

#include <QString>

namespace tessara {

// The values the User-Agent is made of, kept apart from where they are read so the text
// can be checked with any values.
struct UserAgentSources {
    QString hardwareModel;         // uname().machine, e.g. "x86_64", "arm64"
    QString systemName;            // QSysInfo::productType(), e.g. "debian", "android", "ios"
    QString systemVersion;         // QSysInfo::productVersion(), e.g. "12"
    QString applicationName;       // QCoreApplication::applicationName()
    QString applicationVersion;    // QCoreApplication::applicationVersion()
    QString applicationIdentifier; // QCoreApplication::organizationDomain()
    QString applicationBuild;      // HostHooks::appBuildNumber
    QString frameworkVersion;      // the SDK's version
    QString frameworkBuild;        // the SDK's build number

    // Reads the running program's values. A host that sets no application version or
    // domain gets those parts empty, not an error: the text keeps its shape. Only an
    // unreadable hardware model is fatal, since it comes from the system itself.
    static UserAgentSources current();

    // "model/systemVersion AppName/1.2 (identifier/build) TessaraSDK/version(build)",
    // with every whitespace character removed from the application's name.
    QString text() const;
};

} // namespace tessara
