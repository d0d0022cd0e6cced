#include "tessara/backend/TSRNetwork.h"

#include "tessara/backend/LocalisationMatcher.h"
#include "tessara/backend/ShortestText.h"
#include "tessara/backend/TSRTransport.h"
#include "tessara/backend/UserAgentSources.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"

#include <QCoreApplication>
#include <QLocale>

namespace tessara {

namespace {

QPointer<TSRNetwork>& sharedInstance() {
    static QPointer<TSRNetwork> instance;
    return instance;
}

// Runs at the start of the application object's destructor. Deleted later, as one of the
// application's children, the network access manager would leave the state of requests still in
// flight on its worker thread behind: by then Qt no longer delivers the cleanup it posts there.
void deleteSharedInstance() {
    delete sharedInstance().data();
}

} // namespace

TSRNetwork& TSRNetwork::shared() {
    [[maybe_unused]] static const bool created = [] {
        auto* app = QCoreApplication::instance();
        if (!app)
            fatalError(QStringLiteral("The backend client needs a running QCoreApplication."));
        // A QObject can only be given a parent on the parent's thread.
        if (!isMainThread())
            fatalError(QStringLiteral("The backend client must first be used on the main thread."));
        // Owned by the application object and deleted as its destructor begins, so it lives
        // exactly as long as the program's event loop can serve it.
        sharedInstance() = new TSRNetwork(app);
        qAddPostRoutine(deleteSharedInstance);
        return true;
    }();
    const QPointer<TSRNetwork>& instance = sharedInstance();
    if (!instance)
        fatalError(QStringLiteral("The backend client was used after the application ended."));
    return *instance;
}

TSRNetwork::TSRNetwork(QObject* parent)
    : QObject(parent)
    , preferredLocalisation_(
          preferredLocalisation(HostHooks::instance().appLocalisations, QLocale::system().uiLanguages()))
    , transport_(std::make_unique<TSRTransport>(*this)) {}

TSRNetwork::~TSRNetwork() = default;

QUrl TSRNetwork::baseURL() const {
    if (instanceURL_)
        return *instanceURL_;
    static const QUrl fallback = [] {
        const QUrl url(QStringLiteral(TESSARA_DEFAULT_ENDPOINT), QUrl::StrictMode);
        if (!url.isValid() || url.isRelative())
            fatalError(QStringLiteral("The default endpoint is not a valid URL: ") +
                       QStringLiteral(TESSARA_DEFAULT_ENDPOINT));
        return url;
    }();
    return fallback;
}

QString TSRNetwork::preferredLocalisation(const QStringList& appLocalisations,
                                          const QStringList& preferredLanguages) {
    QStringList available = appLocalisations;
    while (!available.isEmpty() && available.first() == QLatin1String("Base"))
        available.removeFirst();
    if (available.isEmpty())
        available = {QStringLiteral("bg")};
    const QStringList chosen = LocalisationMatcher::match(available, preferredLanguages);
    QStringList entries;
    for (qsizetype i = 0; i < chosen.size(); ++i) {
        // Two rounded single-precision steps, never fused: 0.39999998 at index 6 is intended.
        const float step = static_cast<float>(i) * -0.1f;
        const float quality = step + 1.0f;
        entries.append(chosen[i] + QStringLiteral(";q=") + ShortestText::of(quality));
    }
    return entries.join(QStringLiteral(", "));
}

const QString& TSRNetwork::userAgent() const {
    std::call_once(userAgentOnce_, [this] { userAgent_ = UserAgentSources::current().text(); });
    return userAgent_;
}

QString TSRNetwork::preferredDateText(double secondsSince1970) {
    return ShortestText::of(secondsSince1970);
}

} // namespace tessara
