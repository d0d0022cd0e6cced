#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

namespace tessara {

// How screens show a date: the locale's short date with the year in full ("17.05.1990 г." in
// Bulgarian), as a phone's compact date reads. Only the display follows the locale.
QString displayDateFormat(const QLocale& locale = QLocale());
QString displayDate(const QDate& date, const QLocale& locale = QLocale());

} // namespace tessara
