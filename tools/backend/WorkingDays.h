#pragma once

#include <QDate>
#include <QString>
#include <vector>

namespace tessara {

// The days on which a first instalment may fall, and the one offered by default.
struct FirstInstalmentWindow {
    std::vector<QDate> availableDates; // ascending
    QDate defaultDate;                 // one of availableDates
};

// Calendar arithmetic on working days, which here are Monday to Friday. Public holidays are not
// modelled: the reference backend has no holiday calendar to take them from.
class WorkingDays {
public:
    static bool isWorkingDay(QDate date);
    static QDate onOrAfter(QDate date);
    // Every working day from `first` to `last`, both included.
    static std::vector<QDate> between(QDate first, QDate last);

    // The first-instalment choice for a loan taken out on `reference`. One period after the
    // reference (a month, or a week when `periodicity` is "WEEKLY") is the natural first due day;
    // the window reaches half a period to either side of it, so the borrower can move the date to
    // suit a pay day, and never starts before half a period has passed. The default is the first
    // working day on or after the natural due day.
    static FirstInstalmentWindow firstInstalmentWindow(QDate reference, const QString& periodicity);
};

} // namespace tessara
