#include "cli/Program.h"

#include <QRegularExpression>

using Arguments = Program::Arguments;

class UsageTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void helpGoesToStandardOutput_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::newRow("--help") << Arguments{"--help"};
        QTest::newRow("-h") << Arguments{"-h"};
        QTest::newRow("erase --help") << Arguments{"erase", "--help"};
        QTest::newRow("erase -h") << Arguments{"erase", "-h"};
        QTest::newRow("erase, with all that it takes") << Arguments{"erase", "-y", "x", "--help"};
        QTest::newRow("methods --help") << Arguments{"methods", "--help"};
    }
    void helpGoesToStandardOutput()
    {
        QFETCH(Arguments, arguments);
        const Scratch scratch;
        const QByteArray file = scratch.file("x", "content");

        const Outcome outcome = Program(scratch, arguments).run();

        QCOMPARE(Scratch::content(file), QByteArray("content"));
        QVERIFY(outcome.output.startsWith("Usage: vantorel-cli erase [OPTION]... [--] PATH...\n"
                                          "       vantorel-cli methods [--json]\n"));
        for (const char *option : {"  -m, --method N ", "  -y, --yes ", "  -n, --dry-run ",
                                   "      --leave-link-targets\n", "      --json ",
                                   "      --report FILE ", "      --log FILE ", "  -q, --quiet "})
            QVERIFY2(outcome.output.contains(option), option);
        for (const QByteArray &line : outcome.output.split('\n'))
            QVERIFY2(line.size() <= 80, line.constData());
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
    }

    void versionIsOneLine()
    {
        const Scratch scratch;

        const Outcome outcome = Program(scratch, {"--version"}).run();

        QVERIFY(QRegularExpression(QStringLiteral("\\Avantorel-cli \\d+\\.\\d+\\.\\d+\n\\z"))
                    .match(QString::fromUtf8(outcome.output))
                    .hasMatch());
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
    }

    void methodsAreListed()
    {
        const Scratch scratch;

        const Outcome outcome = Program(scratch, {"methods"}).run();

        QVERIFY(outcome.output.startsWith(
            " 1  1-Pass Zero (1 pass)\n"
            "      pass 1: overwrite the entire file data with binary zeros (0x00).\n"));
        QVERIFY(outcome.output.contains("\n10  35-Pass Gutmann Method (35 passes)\n"));
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
    }

    void methodsAreListedAsJson()
    {
        const Scratch scratch;

        const Outcome outcome = Program(scratch, {"methods", "--json"}).run();

        QVERIFY(outcome.output.startsWith("[\n") && outcome.output.endsWith("]\n"));
        QCOMPARE(outcome.output.count("\"number\""), 10);
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
    }

    void nothingElseIsACommand_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<QByteArray>("problem");
        QTest::newRow("nothing") << Arguments{} << QByteArray("what is to be done?");
        QTest::newRow("an unknown word")
            << Arguments{"eras", "x"} << QByteArray("no such command: eras");
        QTest::newRow("a file") << Arguments{"./x"} << QByteArray("no such command: ./x");
        QTest::newRow("empty") << Arguments{""} << QByteArray("no such command: ");
        QTest::newRow("an option before the command")
            << Arguments{"-y", "erase", "x"} << QByteArray("no such command: -y");
        QTest::newRow("escaped") << Arguments{"\033[2J\n\xff"}
                                 << QByteArray("no such command: \\x1b[2J\\n\\xff");
        QTest::newRow("methods with an argument")
            << Arguments{"methods", "4"} << QByteArray("methods takes no argument but --json");
        QTest::newRow("methods with too many")
            << Arguments{"methods", "--json", "x"}
            << QByteArray("methods takes no argument but --json");
    }
    void nothingElseIsACommand()
    {
        QFETCH(Arguments, arguments);
        QFETCH(QByteArray, problem);
        const Scratch scratch;
        scratch.file("x", "content");

        const Outcome outcome = Program(scratch, arguments).run();

        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.errors, "vantorel-cli: " + problem + "\nTry \"vantorel-cli --help\".\n");
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(scratch.path("x")), QByteArray("content"));
    }
};

QTEST_GUILESS_MAIN(UsageTest)
#include "UsageTest.moc"
