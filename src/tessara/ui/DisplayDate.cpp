#include "tessara/ui/DisplayDate.h"

namespace tessara {

QString displayDateFormat(const QLocale& locale) {
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

QString displayDate(const QDate& date, const QLocale& locale) {
    return locale.toString(date, displayDateFormat(locale));
}

} // namespace tessara
