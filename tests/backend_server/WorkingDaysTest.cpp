#include "backend/WorkingDays.h"

#include <algorithm>
#include <gtest/gtest.h>

using tessara::WorkingDays;

TEST(WorkingDays, FirstInstalmentWindowAroundTheNaturalDueDay) {
    struct Case {
        QDate reference;
        const char* periodicity;
        QDate expectedDefault;
        QDate first; // first working day of the window
        QDate last;  // last working day of the window
    };
    const Case cases[] = {
        // A month after Wednesday 2025-01-15 is Saturday 2025-02-15: the default moves to Monday.
        {QDate(2025, 1, 15), "MONTHLY", QDate(2025, 2, 17), QDate(2025, 2, 3), QDate(2025, 2, 28)},
        // A month after 31 January is the last day of February.
        {QDate(2025, 1, 31), "MONTHLY", QDate(2025, 2, 28), QDate(2025, 2, 14), QDate(2025, 3, 14)},
        // Across a year end.
        {QDate(2025, 12, 10), "MONTHLY", QDate(2026, 1, 12), QDate(2025, 12, 29), QDate(2026, 1, 23)},
        // Weekly: a week on, three days either side.
        {QDate(2025, 3, 5), "WEEKLY", QDate(2025, 3, 12), QDate(2025, 3, 10), QDate(2025, 3, 14)},
        // An unknown periodicity is treated as monthly.
        {QDate(2025, 1, 15), "QUARTERLY", QDate(2025, 2, 17), QDate(2025, 2, 3), QDate(2025, 2, 28)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reference.toString(Qt::ISODate).toStdString() + " " + c.periodicity);
        const auto window =
            WorkingDays::firstInstalmentWindow(c.reference, QString::fromLatin1(c.periodicity));
        EXPECT_EQ(window.defaultDate, c.expectedDefault);
        ASSERT_FALSE(window.availableDates.empty());
        EXPECT_EQ(window.availableDates.front(), c.first);
        EXPECT_EQ(window.availableDates.back(), c.last);
        EXPECT_TRUE(std::is_sorted(window.availableDates.begin(), window.availableDates.end()));
        EXPECT_TRUE(std::all_of(window.availableDates.begin(), window.availableDates.end(),
                                WorkingDays::isWorkingDay));
        EXPECT_NE(std::find(window.availableDates.begin(), window.availableDates.end(), window.defaultDate),
                  window.availableDates.end());
    }
}
