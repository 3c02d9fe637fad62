#include "cli/JsonReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

JsonReport everyFigureDifferent()
{
    JsonReport report;
    report.method = 8;
    report.found.files = 11;
    report.found.bytes = 12;
    report.found.folders = 13;
    report.found.links = 14;
    report.found.hardLinks = 15;
    report.found.copyOnWrite = 16;
    report.filesWiped = 17;
    report.filesFailed = 18;
    report.filesRemaining = 19;
    report.bytesWiped = 20;
    report.foldersRemoved = 21;
    report.elapsedSeconds = 22.5;
    report.failures = {{"/a", 2, QStringLiteral("No such file or directory")}};
    return report;
}

QJsonObject parsed(const JsonReport &report)
{
    return QJsonDocument::fromJson(report.toJson()).object();
}

QJsonObject onlyFailure(const QByteArray &path)
{
    JsonReport report = everyFigureDifferent();
    report.failures = {{path, 13, QStringLiteral("Permission denied")}};
    const QJsonArray failed = parsed(report).value(QStringLiteral("failed")).toArray();
    return failed.size() == 1 ? failed.at(0).toObject() : QJsonObject();
}

} // namespace

class JsonReportTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3")); }

    void everyFigureStandsUnderItsKeyAndThereIsNoOther()
    {
        const QJsonObject expected = QJsonDocument::fromJson(R"json({
            "version": "1.2.3",
            "method": {"number": 8, "name": "7-Pass DoD 5220.22-M (ECE)", "passes": 7},
            "files": {"found": 11, "wiped": 17, "failed": 18, "remaining": 19},
            "bytes": {"found": 12, "wiped": 20},
            "failed": [{"path": "/a", "errno": 2, "message": "No such file or directory"}],
            "folders": {"found": 13, "removed": 21},
            "links": 14,
            "hard_links": 15,
            "elapsed_seconds": 22.5
        })json")
                                         .object();
        QVERIFY(!expected.isEmpty());

        QCOMPARE(parsed(everyFigureDifferent()), expected);
    }

    void largeFiguresAreWrittenInFull()
    {
        JsonReport report = everyFigureDifferent();
        report.found.bytes = 4503599627370497; // 2^52 + 1

        QVERIFY2(report.toJson().contains("\"found\": 4503599627370497,"),
                 report.toJson().constData());
    }

    void withoutFailuresTheListIsEmpty()
    {
        JsonReport report = everyFigureDifferent();
        report.failures.clear();

        const QJsonValue failed = parsed(report).value(QStringLiteral("failed"));

        QVERIFY(failed.isArray());
        QVERIFY(failed.toArray().isEmpty());
    }

    void failuresKeepTheirOrder()
    {
        JsonReport report = everyFigureDifferent();
        report.failures = {{"/b", 1, {}}, {"/a", 2, {}}, {"/c", 3, {}}};

        const QJsonArray failed = parsed(report).value(QStringLiteral("failed")).toArray();

        QCOMPARE(failed.size(), 3);
        QCOMPARE(failed.at(0).toObject().value(QStringLiteral("path")).toString(),
                 QStringLiteral("/b"));
        QCOMPARE(failed.at(1).toObject().value(QStringLiteral("path")).toString(),
                 QStringLiteral("/a"));
        QCOMPARE(failed.at(2).toObject().value(QStringLiteral("errno")).toInt(), 3);
    }

    void aPathInUtf8IsWrittenAsItIs_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("plain") << QByteArray("/a b;c");
        QTest::newRow("umlaut") << QByteArray("/\xc3\xa4");
        QTest::newRow("outside the basic plane") << QByteArray("/\xf0\x9f\x94\xa5");
        QTest::newRow("newline and quote") << QByteArray("/a\nb\"c\\d\033");
        QTest::newRow("replacement character") << QByteArray("/\xef\xbf\xbd");
        QTest::newRow("empty") << QByteArray("");
    }
    void aPathInUtf8IsWrittenAsItIs()
    {
        QFETCH(QByteArray, path);

        const QJsonObject entry = onlyFailure(path);

        QCOMPARE(entry.value(QStringLiteral("path")).toString().toUtf8(), path);
        QCOMPARE(entry.keys(), (QStringList{QStringLiteral("errno"), QStringLiteral("message"),
                                            QStringLiteral("path")}));
    }

    void aPathInNoEncodingIsAlsoWrittenInBase64_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("a lone byte") << QByteArray("/a\xff");
        QTest::newRow("a cut sequence") << QByteArray("/\xf0\x9f\x94");
        QTest::newRow("an overlong slash") << QByteArray("/\xc0\xaf");
        QTest::newRow("a surrogate") << QByteArray("/\xed\xa0\x80");
    }
    void aPathInNoEncodingIsAlsoWrittenInBase64()
    {
        QFETCH(QByteArray, path);

        const QJsonObject entry = onlyFailure(path);

        QCOMPARE(QByteArray::fromBase64(
                     entry.value(QStringLiteral("path_base64")).toString().toLatin1()),
                 path);
        QVERIFY(entry.value(QStringLiteral("path")).toString().startsWith(QLatin1Char('/')));
        QCOMPARE(entry.size(), 4);
    }

    void whatWasRefusedHasErrorNumberZero()
    {
        JsonReport report = everyFigureDifferent();
        report.failures = {{"/", 0, QStringLiteral("Refused: \"/\" is never erased")}};

        const QJsonObject entry =
            parsed(report).value(QStringLiteral("failed")).toArray().at(0).toObject();

        QCOMPARE(entry.value(QStringLiteral("errno")), QJsonValue(0));
        QCOMPARE(entry.value(QStringLiteral("message")).toString(),
                 QStringLiteral("Refused: \"/\" is never erased"));
    }
};

QTEST_GUILESS_MAIN(JsonReportTest)
#include "JsonReportTest.moc"
