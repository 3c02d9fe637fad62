#include "cli/MethodList.h"

#include "engine/WipeDescriptionController.h"
#include "engine/WipeSchedule.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const WipeDescriptionObject &descriptionOf(std::int64_t method)
{
    static const WipeDescriptionController catalogue;
    return catalogue.wipeDescriptions().at(static_cast<std::size_t>(method));
}

qint64 passesOf(std::int64_t method)
{
    return qint64(WipeSchedule::passes(method).size());
}

} // namespace

QString MethodList::nameOf(std::int64_t method)
{
    return descriptionOf(method).name;
}

QString MethodList::text()
{
    QString lines;
    for (std::int64_t method = WipeSchedule::firstMethod; method <= WipeSchedule::lastMethod;
         ++method) {
        const WipeDescriptionObject &description = descriptionOf(method);
        lines +=
            QStringLiteral("%1  %2 (%3)\n")
                .arg(method, 2)
                .arg(description.name, passesOf(method) == 1
                                           ? QStringLiteral("1 pass")
                                           : QStringLiteral("%1 passes").arg(passesOf(method)));
        for (const QString &line : description.info.split(QLatin1Char('\n')))
            lines += QStringLiteral("      %1\n").arg(line);
    }
    return lines;
}

QByteArray MethodList::json()
{
    QJsonArray methods;
    for (std::int64_t method = WipeSchedule::firstMethod; method <= WipeSchedule::lastMethod;
         ++method) {
        const WipeDescriptionObject &description = descriptionOf(method);
        methods.append(QJsonObject{{QStringLiteral("number"), qint64(method)},
                                   {QStringLiteral("name"), description.name},
                                   {QStringLiteral("description"), description.info},
                                   {QStringLiteral("passes"), passesOf(method)}});
    }
    return QJsonDocument(methods).toJson();
}
