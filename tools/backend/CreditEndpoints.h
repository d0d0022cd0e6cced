#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"
#include "backend/ProcessStore.h"
#include "backend/RouteTable.h"

#include <QDate>
#include <functional>

namespace tessara {

// The credit calls: GET "/custom/credit/products", GET "/custom/credit/installmentDates" and
// POST "/custom/credit/installmentDetails".
class CreditEndpoints {
public:
    using Clock = std::function<QDate()>;

    // `today` gives the reference date when a dates request names none.
    explicit CreditEndpoints(const ProcessStore& processes, Clock today = &QDate::currentDate);

    void addRoutes(RouteTable& routes);

    BackendResponse products() const;
    BackendResponse instalmentDates(const BackendRequest& request) const;
    BackendResponse instalmentDetails(const BackendRequest& request) const;

private:
    const ProcessStore& processes_;
    Clock today_;
};

} // namespace tessara
