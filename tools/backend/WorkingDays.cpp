#include "backend/WorkingDays.h"

namespace tessara {

bool WorkingDays::isWorkingDay(QDate date) {
    return date.isValid() && date.dayOfWeek() <= 5;
}

QDate WorkingDays::onOrAfter(QDate date) {
    while (date.isValid() && !isWorkingDay(date))
        date = date.addDays(1);
    return date;
}

std::vector<QDate> WorkingDays::between(QDate first, QDate last) {
    std::vector<QDate> days;
    for (QDate day = first; day.isValid() && day <= last; day = day.addDays(1)) {
        if (isWorkingDay(day))
            days.push_back(day);
    }
    return days;
}

FirstInstalmentWindow WorkingDays::firstInstalmentWindow(QDate reference, const QString& periodicity) {
    const bool weekly = periodicity.compare(QLatin1String("WEEKLY"), Qt::CaseInsensitive) == 0;
    const QDate due = weekly ? reference.addDays(7) : reference.addMonths(1);
    const qint64 halfPeriod = weekly ? 3 : 14;
    FirstInstalmentWindow window;
    window.availableDates = between(due.addDays(-halfPeriod), due.addDays(halfPeriod));
    window.defaultDate = onOrAfter(due);
    return window;
}

} // namespace tessara
