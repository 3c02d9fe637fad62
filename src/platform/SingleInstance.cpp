#include "platform/SingleInstance.h"

#include "platform/ApplicationHandOver.h"
#include "platform/ApplicationService.h"
#include "platform/SystemLog.h"

#include <QDeadlineTimer>

namespace {

using ApplicationHandOver::Answer;
using ApplicationHandOver::Outcome;
using SingleInstance::Standing;

std::chrono::milliseconds rest(const QDeadlineTimer &deadline)
{
    constexpr std::chrono::milliseconds least(100);
    return std::max(least, std::chrono::milliseconds(deadline.remainingTime()));
}

Standing end(ApplicationService &service)
{
    service.close();
    return Standing::HandedOver;
}

/// It may have left since.
Standing succeedOrGoOnAlone(ApplicationService &service, const QString &cause)
{
    if (service.requestName(std::chrono::seconds(1)) == ApplicationService::Name::Owned)
        return Standing::First;
    SystemLog::write("SingleInstance",
                     QStringLiteral("the running Vantorel does not answer: %1").arg(cause));
    return Standing::Alone;
}

} // namespace

SingleInstance::Standing SingleInstance::begin(ApplicationService &service, const Start &start)
{
    const QDeadlineTimer deadline(start.patience);
    Answer answer;
    do {
        const ApplicationService::Name name = service.requestName(rest(deadline));
        if (name != ApplicationService::Name::Taken)
            return name == ApplicationService::Name::Owned ? Standing::First : Standing::Alone;
        answer = ApplicationHandOver::call(service.connection(), start.paths, start.platformData,
                                           rest(deadline));
        if (answer.outcome == Outcome::Accepted)
            return end(service);
    } while (answer.outcome == Outcome::Unanswered && !deadline.hasExpired());
    return succeedOrGoOnAlone(service, answer.cause);
}
