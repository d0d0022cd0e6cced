#include "tessara/backend/LocalisationMatcher.h"

namespace tessara {

namespace {

QString normalised(const QString& tag) {
    return tag.trimmed().replace(QLatin1Char('_'), QLatin1Char('-')).toLower();
}

QString baseLanguage(const QString& normalisedTag) {
    return normalisedTag.section(QLatin1Char('-'), 0, 0);
}

} // namespace

QStringList LocalisationMatcher::match(const QStringList& available, const QStringList& preferences) {
    for (const QString& preference : preferences) {
        const QString wanted = normalised(preference);
        if (wanted.isEmpty())
            continue;
        QStringList matches;
        auto addWhere = [&](auto&& predicate) {
            for (const QString& entry : available) {
                if (predicate(normalised(entry)) && !matches.contains(entry))
                    matches.append(entry);
            }
        };
        for (QString form = wanted; !form.isEmpty(); form = form.section(QLatin1Char('-'), 0, -2))
            addWhere([&](const QString& entry) { return entry == form; });
        const QString base = baseLanguage(wanted);
        addWhere([&](const QString& entry) { return baseLanguage(entry) == base; });
        if (!matches.isEmpty())
            return matches;
    }
    return available.isEmpty() ? QStringList() : QStringList{available.first()};
}

} // namespace tessara
