#include "cli/EraseOptions.h"

#include <QTest>

namespace {

using Arguments = std::vector<QByteArray>;

EraseOptions parsed(const Arguments &arguments)
{
    return EraseOptions::parse(arguments, {4, false});
}

} // namespace

class EraseOptionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void withoutOptionsOnlyThePreferencesStand()
    {
        const EraseOptions options = EraseOptions::parse({"a", "b"}, {7, true});

        QCOMPARE(options.error, QString());
        QCOMPARE(options.method, 7);
        QVERIFY(options.leavesLinkTargets);
        QVERIFY(!options.isConfirmed);
        QVERIFY(!options.isDryRun);
        QVERIFY(!options.printsJson);
        QVERIFY(!options.isQuiet);
        QVERIFY(options.reportPath.isNull());
        QVERIFY(options.logPath.isNull());
        QCOMPARE(options.paths, (Arguments{"a", "b"}));
    }

    void aSwitchSetsItselfAndNothingElse_data()
    {
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("-y") << QByteArray("-y") << QByteArray("confirmed");
        QTest::newRow("--yes") << QByteArray("--yes") << QByteArray("confirmed");
        QTest::newRow("-n") << QByteArray("-n") << QByteArray("dry");
        QTest::newRow("--dry-run") << QByteArray("--dry-run") << QByteArray("dry");
        QTest::newRow("-q") << QByteArray("-q") << QByteArray("quiet");
        QTest::newRow("--quiet") << QByteArray("--quiet") << QByteArray("quiet");
        QTest::newRow("--json") << QByteArray("--json") << QByteArray("json");
        QTest::newRow("--leave-link-targets")
            << QByteArray("--leave-link-targets") << QByteArray("links");
    }
    void aSwitchSetsItselfAndNothingElse()
    {
        QFETCH(QByteArray, argument);
        QFETCH(QByteArray, expected);

        const EraseOptions options = parsed({argument, "a"});

        QCOMPARE(options.error, QString());
        QCOMPARE(options.isConfirmed, expected == "confirmed");
        QCOMPARE(options.isDryRun, expected == "dry");
        QCOMPARE(options.isQuiet, expected == "quiet");
        QCOMPARE(options.printsJson, expected == "json");
        QCOMPARE(options.leavesLinkTargets, expected == "links");
        QCOMPARE(options.method, 4);
        QVERIFY(options.reportPath.isNull());
        QCOMPARE(options.paths, (Arguments{"a"}));
    }

    void theMethodIsReadInEveryForm_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::newRow("short, apart") << Arguments{"-m", "10", "a"};
        QTest::newRow("short, joined") << Arguments{"-m10", "a"};
        QTest::newRow("short, behind a switch") << Arguments{"-ym10", "a"};
        QTest::newRow("long, apart") << Arguments{"--method", "10", "a"};
        QTest::newRow("long, joined") << Arguments{"--method=10", "a"};
        QTest::newRow("after the path") << Arguments{"a", "-m", "10"};
        QTest::newRow("the last one counts") << Arguments{"-m", "1", "a", "--method=10"};
    }
    void theMethodIsReadInEveryForm()
    {
        QFETCH(Arguments, arguments);

        const EraseOptions options = parsed(arguments);

        QCOMPARE(options.error, QString());
        QCOMPARE(options.method, 10);
        QCOMPARE(options.paths, (Arguments{"a"}));
    }

    void everyMethodOfTheCatalogueIsTaken()
    {
        for (int method = 1; method <= 10; ++method) {
            const EraseOptions options = parsed({"-m", QByteArray::number(method), "a"});

            QCOMPARE(options.error, QString());
            QCOMPARE(options.method, method);
        }
    }

    void aMethodOutsideTheCatalogueIsRefused_data()
    {
        QTest::addColumn<QByteArray>("method");
        for (const char *method :
             {"0", "11", "-1", "abc", "", "4x", "x4", "4.0", "0x4", "99999999999999999999"})
            QTest::newRow(*method == '\0' ? "empty" : method) << QByteArray(method);
    }
    void aMethodOutsideTheCatalogueIsRefused()
    {
        QFETCH(QByteArray, method);

        const QString expected =
            QStringLiteral("no such method: %1 (1 to 10, see \"vantorel-cli methods\")")
                .arg(QString::fromLatin1(method));
        QCOMPARE(parsed({"-m", method, "a"}).error, expected);
        QCOMPARE(parsed({"--method=" + method, "a"}).error, expected);
    }

    void aStrangeMethodIsShownWithItsControlCharactersEscaped()
    {
        const QString expected = QStringLiteral(
            "no such method: \\x1b[31m\\n\\xff (1 to 10, see \"vantorel-cli methods\")");
        QCOMPARE(parsed({"-m", "\033[31m\n\xff", "a"}).error, expected);
    }

    void thePreferredMethodStandsInForNone()
    {
        QCOMPARE(EraseOptions::parse({"a"}, {9, false}).method, 9);
        QCOMPARE(EraseOptions::parse({"-m2", "a"}, {9, false}).method, 2);
    }

    void aPreferredMethodOutsideTheCatalogueIsRefusedUnlessAnotherIsNamed_data()
    {
        QTest::addColumn<std::int64_t>("preferred");
        for (const std::int64_t preferred : {0, 11, -1, 99})
            QTest::addRow("%lld", static_cast<long long>(preferred)) << preferred;
    }
    void aPreferredMethodOutsideTheCatalogueIsRefusedUnlessAnotherIsNamed()
    {
        QFETCH(std::int64_t, preferred);

        QCOMPARE(EraseOptions::parse({"a"}, {preferred, false}).error,
                 QStringLiteral("the preferred method is %1, which does not exist: choose one of "
                                "1 to 10 with --method")
                     .arg(preferred));
        QCOMPARE(EraseOptions::parse({"-m4", "a"}, {preferred, false}).error, QString());
    }

    void theReportIsReadInEveryForm_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("apart") << Arguments{"--report", "r", "a"} << QByteArray("r");
        QTest::newRow("joined") << Arguments{"--report=r", "a"} << QByteArray("r");
        QTest::newRow("after the path") << Arguments{"a", "--report", "r"} << QByteArray("r");
        QTest::newRow("with an equals sign") << Arguments{"--report=r=s", "a"} << QByteArray("r=s");
        QTest::newRow("like an option") << Arguments{"--report", "-y", "a"} << QByteArray("-y");
        QTest::newRow("not UTF-8") << Arguments{"--report", "\xff", "a"} << QByteArray("\xff");
    }
    void theReportIsReadInEveryForm()
    {
        QFETCH(Arguments, arguments);
        QFETCH(QByteArray, report);

        const EraseOptions options = parsed(arguments);

        QCOMPARE(options.error, QString());
        QCOMPARE(options.reportPath, report);
        QVERIFY(!options.isConfirmed);
        QCOMPARE(options.paths, (Arguments{"a"}));
    }

    void theLogIsReadInEveryForm()
    {
        for (const Arguments &arguments :
             {Arguments{"--log", "l", "a"}, Arguments{"--log=l", "a"}, Arguments{"a", "--log=l"}}) {
            const EraseOptions options = parsed(arguments);
            QCOMPARE(options.error, QString());
            QCOMPARE(options.logPath, QByteArray("l"));
            QVERIFY(options.reportPath.isNull());
            QCOMPARE(options.paths, (Arguments{"a"}));
        }
        const QByteArray empty = parsed({"--log=", "a"}).logPath;
        QVERIFY(empty.isEmpty() && !empty.isNull());
    }

    void optionsAndPathsStandInAnyOrder()
    {
        const EraseOptions options =
            parsed({"a", "-yq", "b", "--json", "-m", "3", "c", "-n", "--leave-link-targets"});

        QCOMPARE(options.error, QString());
        QVERIFY(options.isConfirmed && options.isQuiet && options.printsJson && options.isDryRun &&
                options.leavesLinkTargets);
        QCOMPARE(options.method, 3);
        QCOMPARE(options.paths, (Arguments{"a", "b", "c"}));
    }

    void afterTwoDashesAllArePaths()
    {
        const EraseOptions options = parsed({"-y", "a", "--", "-n", "--json", "--", "-m"});

        QCOMPARE(options.error, QString());
        QVERIFY(options.isConfirmed);
        QVERIFY(!options.isDryRun);
        QVERIFY(!options.printsJson);
        QCOMPARE(options.paths, (Arguments{"a", "-n", "--json", "--", "-m"}));
    }

    void pathsStayTheBytesTheyAre()
    {
        const Arguments paths = {"", "-", "\xff\xfe", "a\nb", "./x/", "\xc3\xa4"};

        QCOMPARE(parsed(paths).paths, paths);
    }

    void leavingLinkTargetsAloneCanBePreferred()
    {
        QVERIFY(EraseOptions::parse({"a"}, {4, true}).leavesLinkTargets);
        QVERIFY(!EraseOptions::parse({"a"}, {4, false}).leavesLinkTargets);
        QVERIFY(EraseOptions::parse({"--leave-link-targets", "a"}, {4, false}).leavesLinkTargets);
    }

    void whoAsksForHelpNeedsNoPath_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::newRow("-h") << Arguments{"-h"};
        QTest::newRow("--help") << Arguments{"--help"};
        QTest::newRow("among others") << Arguments{"-yh", "a"};
    }
    void whoAsksForHelpNeedsNoPath()
    {
        QFETCH(Arguments, arguments);

        QCOMPARE(parsed(arguments).error, QString());
        QVERIFY(parsed(arguments).wantsHelp);
        QVERIFY(!parsed({"--", "--help"}).wantsHelp);
    }

    void withoutAPathThereIsNothingToErase_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::newRow("no argument") << Arguments{};
        QTest::newRow("only options") << Arguments{"-y", "--json"};
        QTest::newRow("only two dashes") << Arguments{"--"};
    }
    void withoutAPathThereIsNothingToErase()
    {
        QFETCH(Arguments, arguments);

        QCOMPARE(parsed(arguments).error,
                 QStringLiteral("nothing to erase: name files or folders"));
    }

    void wrongUsageNamesItsCulprit_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<QString>("error");
        QTest::newRow("unknown letter")
            << Arguments{"a", "-x"} << QStringLiteral("unknown option: -x");
        QTest::newRow("unknown letter before others")
            << Arguments{"-xq", "a"} << QStringLiteral("unknown option: -x");
        QTest::newRow("unknown letter among others")
            << Arguments{"--yes", "a", "-qxn"} << QStringLiteral("unknown option: -x");
        QTest::newRow("unknown word")
            << Arguments{"--erase-all", "a"} << QStringLiteral("unknown option: --erase-all");
        QTest::newRow("unknown word between paths")
            << Arguments{"a", "--bogus=1", "b"} << QStringLiteral("unknown option: --bogus=1");
        QTest::newRow("a value where none goes")
            << Arguments{"--yes=no", "a"} << QStringLiteral("unknown option: --yes=no");
        QTest::newRow("escaped") << Arguments{"--\033[2J\xff", "a"}
                                 << QStringLiteral("unknown option: --\\x1b[2J\\xff");
        QTest::newRow("method without its value, short")
            << Arguments{"a", "-m"} << QStringLiteral("needs a value: -m");
        QTest::newRow("method without its value, long")
            << Arguments{"a", "--method"} << QStringLiteral("needs a value: --method");
        QTest::newRow("report without its value")
            << Arguments{"a", "--report"} << QStringLiteral("needs a value: --report");
    }
    void wrongUsageNamesItsCulprit()
    {
        QFETCH(Arguments, arguments);
        QFETCH(QString, error);

        QCOMPARE(parsed(arguments).error, error);
    }
};

QTEST_APPLESS_MAIN(EraseOptionsTest)
#include "EraseOptionsTest.moc"
