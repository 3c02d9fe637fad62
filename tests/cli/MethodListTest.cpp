#include "cli/MethodList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <array>

namespace {

struct Method
{
    const char *name;
    int passes;
};

constexpr std::array<Method, 10> methods = {{
    {"1-Pass Zero", 1},
    {"1-Pass Random", 1},
    {"2-Pass GOST R 50739-95", 2},
    {"3-Pass DoD 5220.22-M (E)", 3},
    {"4-Pass RAZER", 4},
    {"7-Pass Schneier", 7},
    {"7-Pass BSI/VSITR", 7},
    {"7-Pass DoD 5220.22-M (ECE)", 7},
    {"33-Pass Pfitzner Method", 33},
    {"35-Pass Gutmann Method", 35},
}};

} // namespace

class MethodListTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void methodsAreNamedByNumber()
    {
        for (std::size_t at = 0; at < methods.size(); ++at)
            QCOMPARE(MethodList::nameOf(std::int64_t(at) + 1),
                     QString::fromLatin1(methods[at].name));
    }

    void theTextListsEveryMethodInOrderWithItsDescriptionBelow()
    {
        const QString text = MethodList::text();

        QVERIFY(text.startsWith(QStringLiteral(
            " 1  1-Pass Zero (1 pass)\n"
            "      pass 1: overwrite the entire file data with binary zeros (0x00).\n"
            " 2  1-Pass Random (1 pass)\n")));
        QVERIFY(text.endsWith(QStringLiteral(
            "10  35-Pass Gutmann Method (35 passes)\n"
            "      pass 1-4: overwrite the entire file data with pseudo-random bytes.\n"
            "      pass 5-31: overwrite the entire file data with predefined patterns.\n"
            "      pass 32-35: overwrite the entire file data with pseudo-random bytes.\n")));
        qsizetype at = 0;
        for (std::size_t method = 0; method < methods.size(); ++method) {
            const QString title =
                QStringLiteral("%1  %2 (%3 %4)\n")
                    .arg(method + 1, 2)
                    .arg(QLatin1String(methods[method].name))
                    .arg(methods[method].passes)
                    .arg(QLatin1String(methods[method].passes == 1 ? "pass" : "passes"));
            QVERIFY2(text.indexOf(title) >= at, qPrintable(title));
            at = text.indexOf(title) + title.size();
        }
    }

    void theJsonIsAListOfEveryMethod()
    {
        const QJsonArray list = QJsonDocument::fromJson(MethodList::json()).array();

        QCOMPARE(list.size(), 10);
        for (qsizetype at = 0; at < list.size(); ++at) {
            const QJsonObject method = list.at(at).toObject();
            QCOMPARE(method.value(QStringLiteral("number")).toInt(), at + 1);
            QCOMPARE(method.value(QStringLiteral("name")).toString(),
                     QString::fromLatin1(methods[std::size_t(at)].name));
            QCOMPARE(method.value(QStringLiteral("passes")).toInt(),
                     methods[std::size_t(at)].passes);
            QVERIFY(method.value(QStringLiteral("description"))
                        .toString()
                        .startsWith(QLatin1String("pass 1")));
            QCOMPARE(method.size(), 4);
        }
        QCOMPARE(list.at(2).toObject().value(QStringLiteral("description")).toString(),
                 QStringLiteral(
                     "pass 1: overwrite the entire file data with binary zeros (0x00).\n"
                     "pass 2: overwrite the entire file data once with pseudo-random bytes."));
    }
};

QTEST_APPLESS_MAIN(MethodListTest)
#include "MethodListTest.moc"
