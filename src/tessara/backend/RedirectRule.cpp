#include "tessara/backend/RedirectRule.h"

namespace tessara {

std::optional<RedirectRule::Step> RedirectRule::next(int status, const QByteArray& verb,
                                                     const QByteArray& location, const QUrl& current) {
    if (status != 301 && status != 302 && status != 303 && status != 307 && status != 308)
        return std::nullopt;
    if (location.trimmed().isEmpty())
        return std::nullopt;
    const QUrl target = current.resolved(QUrl::fromEncoded(location.trimmed()));
    const QString scheme = target.scheme();
    if (!target.isValid() || (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return std::nullopt;
    if (current.scheme() == QLatin1String("https") && scheme == QLatin1String("http"))
        return std::nullopt;
    const bool toGet =
        (status == 303 && verb != "HEAD") || ((status == 301 || status == 302) && verb == "POST");
    if (toGet)
        return Step{target, QByteArrayLiteral("GET"), false};
    return Step{target, verb, true};
}

} // namespace tessara
