#include "backend/CreditEndpoints.h"

#include "backend/AnnuityCalculator.h"
#include "backend/WorkingDays.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/InstalmentDetailsDTO.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

bool isWeekly(const CreditProductJSON& product) {
    return product.productPeriodicity.compare(QLatin1String("WEEKLY"), Qt::CaseInsensitive) == 0;
}

} // namespace

CreditEndpoints::CreditEndpoints(const ProcessStore& processes, Clock today)
    : processes_(processes)
    , today_(std::move(today)) {}

void CreditEndpoints::addRoutes(RouteTable& routes) {
    routes.add("GET", QStringLiteral("/custom/credit/products"),
               [this](const BackendRequest&, const QStringList&) { return products(); });
    routes.add(
        "GET", QStringLiteral("/custom/credit/installmentDates"),
        [this](const BackendRequest& request, const QStringList&) { return instalmentDates(request); });
    routes.add(
        "POST", QStringLiteral("/custom/credit/installmentDetails"),
        [this](const BackendRequest& request, const QStringList&) { return instalmentDetails(request); });
}

BackendResponse CreditEndpoints::products() const {
    return BackendResponse::document(processes_.products());
}

BackendResponse CreditEndpoints::instalmentDates(const BackendRequest& request) const {
    bool ok = false;
    const QString productText = request.query.queryItemValue(QStringLiteral("productId"), QUrl::FullyDecoded);
    const qint64 productId = productText.toLongLong(&ok);
    if (!ok)
        return BackendResponse::badRequest(
            QStringLiteral("Параметърът \"productId\" трябва да е цяло число."));
    const CreditProductJSON* product = processes_.product(productId);
    if (!product)
        return BackendResponse::badRequest(QStringLiteral("Непознат кредитен продукт: %1.").arg(productId));

    // The client sends the present moment as seconds since 1970 (with a fraction); the day is
    // taken in this server's time zone. Without it, today is the reference.
    QDate reference = today_();
    if (request.query.hasQueryItem(QStringLiteral("preferedDate"))) {
        const double seconds =
            request.query.queryItemValue(QStringLiteral("preferedDate"), QUrl::FullyDecoded).toDouble(&ok);
        const QDateTime moment = ok && std::isfinite(seconds)
                                     ? QDateTime::fromMSecsSinceEpoch(qint64(std::llround(seconds * 1000.0)))
                                     : QDateTime();
        if (!moment.isValid() || std::abs(seconds) > 1e11)
            return BackendResponse::badRequest(
                QStringLiteral("Параметърът \"preferedDate\" трябва да е брой секунди от 1970 г."));
        reference = moment.date();
    }

    const FirstInstalmentWindow window =
        WorkingDays::firstInstalmentWindow(reference, product->productPeriodicity);
    CreditInstalmentDatesJSON answer;
    answer.productId = QString::number(product->productId); // a string in this one record
    answer.defaultFirstInstallmentDate = window.defaultDate;
    answer.availableDates = window.availableDates;
    return BackendResponse::document(answer);
}

BackendResponse CreditEndpoints::instalmentDetails(const BackendRequest& request) const {
    const auto dto = decodeDocument<InstalmentDetailsDTO>(request.body);
    if (!dto)
        return BackendResponse::badRequest(
            QStringLiteral("Тялото трябва да съдържа \"productId\", \"amount\" и \"periods\"."));
    const CreditProductJSON* product = processes_.product(dto->productId);
    if (!product)
        return BackendResponse::badRequest(
            QStringLiteral("Непознат кредитен продукт: %1.").arg(dto->productId));
    const auto offer =
        std::find_if(product->periods.begin(), product->periods.end(),
                     [&](const CreditProductPeriodJSON& p) { return p.period == dto->periods; });
    if (offer == product->periods.end())
        return BackendResponse::badRequest(QStringLiteral("Продуктът „%1“ не се предлага за %2 вноски.")
                                               .arg(product->productName)
                                               .arg(dto->periods));
    if (dto->amount < offer->minPrincipal || offer->maxPrincipal < dto->amount)
        return BackendResponse::badRequest(
            QStringLiteral("Сумата за %1 вноски трябва да е между %2 и %3.")
                .arg(dto->periods)
                .arg(offer->minPrincipal.description(), offer->maxPrincipal.description()));

    const auto plan = AnnuityCalculator::plan(dto->amount, product->annualInterestRate.value_or(Decimal()),
                                              dto->periods, isWeekly(*product) ? 52 : 12);
    if (!plan)
        return BackendResponse::badRequest(QStringLiteral("Погасителен план не може да бъде изчислен."));

    CreditInstalmentDetailsJSON answer;
    answer.selectedCreditAmount = dto->amount; // exactly what was asked for
    answer.selectedPeriod = dto->periods;
    answer.instalmentAmount = plan->instalment;
    answer.totalDueAmount = plan->totalDue;
    answer.accruals = {
        AccrualJSON{plan->principal, QStringLiteral("PRINCIPAL"), QStringLiteral("Главница"), 1},
        AccrualJSON{plan->totalInterest, QStringLiteral("INTEREST"), QStringLiteral("Лихва"), 2}};
    return BackendResponse::document(answer);
}

} // namespace tessara
