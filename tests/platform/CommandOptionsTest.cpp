#include "platform/CommandOptions.h"

#include <QTest>

namespace {

using Options = std::vector<std::pair<char, QByteArray>>;
using Operands = std::vector<QByteArray>;

const std::vector<CommandOptions::Option> known = {
    {"method", 'm', true}, {"yes", 'y'}, {"report", '\4', true}, {"json", '\2'}, {"quiet", 'q'},
};

CommandOptions parse(const std::vector<QByteArray> &arguments)
{
    return CommandOptions::parse(arguments, known);
}

} // namespace

class CommandOptionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void noArgumentsAreNothing();
    void valuesStandJoinedOrApart_data();
    void valuesStandJoinedOrApart();
    void optionsAndOperandsMixInAnyOrder();
    void theyMixAlsoWhereTheEnvironmentAsksForPosix();
    void optionsKeepTheirOrder();
    void shortOptionsCluster();
    void twoDashesEndTheOptions();
    void aSingleDashIsAnOperand();
    void emptyArgumentsAndValuesStay();
    void bytesStayAsTheyAre();
    void aLongNameMayBeShortened();
    void anOptionWithoutShortFormHasNone();
    void whatIsWrongIsNamed_data();
    void whatIsWrongIsNamed();
    void everyParseStartsAnew();
};

void CommandOptionsTest::noArgumentsAreNothing()
{
    const CommandOptions parsed = parse({});
    QVERIFY(parsed.options.empty());
    QVERIFY(parsed.operands.empty());
    QVERIFY(parsed.error.isEmpty());
}

void CommandOptionsTest::valuesStandJoinedOrApart_data()
{
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::newRow("short, apart") << QByteArrayList({"-m", "4"});
    QTest::newRow("short, joined") << QByteArrayList({"-m4"});
    QTest::newRow("long, apart") << QByteArrayList({"--method", "4"});
    QTest::newRow("long, joined") << QByteArrayList({"--method=4"});
}

void CommandOptionsTest::valuesStandJoinedOrApart()
{
    QFETCH(QByteArrayList, arguments);
    const CommandOptions parsed = parse({arguments.begin(), arguments.end()});
    QCOMPARE(parsed.options, Options({{'m', "4"}}));
    QVERIFY(parsed.operands.empty());
    QVERIFY(parsed.error.isEmpty());
}

void CommandOptionsTest::optionsAndOperandsMixInAnyOrder()
{
    const CommandOptions parsed = parse({"a", "-y", "b", "--report", "r", "c", "--json"});
    QCOMPARE(parsed.options, Options({{'y', {}}, {'\4', "r"}, {'\2', {}}}));
    QCOMPARE(parsed.operands, Operands({"a", "b", "c"}));
}

void CommandOptionsTest::theyMixAlsoWhereTheEnvironmentAsksForPosix()
{
    QVERIFY(qputenv("POSIXLY_CORRECT", "1"));
    const CommandOptions parsed = parse({"a", "-y", "b"});
    qunsetenv("POSIXLY_CORRECT");
    QCOMPARE(parsed.options, Options({{'y', {}}}));
    QCOMPARE(parsed.operands, Operands({"a", "b"}));
}

void CommandOptionsTest::optionsKeepTheirOrder()
{
    QCOMPARE(parse({"-q", "-m1", "-y", "-m2"}).options,
             Options({{'q', {}}, {'m', "1"}, {'y', {}}, {'m', "2"}}));
}

void CommandOptionsTest::shortOptionsCluster()
{
    QCOMPARE(parse({"-yqm7"}).options, Options({{'y', {}}, {'q', {}}, {'m', "7"}}));
}

void CommandOptionsTest::twoDashesEndTheOptions()
{
    const CommandOptions parsed = parse({"-y", "--", "-q", "--json", "--"});
    QCOMPARE(parsed.options, Options({{'y', {}}}));
    QCOMPARE(parsed.operands, Operands({"-q", "--json", "--"}));
}

void CommandOptionsTest::aSingleDashIsAnOperand()
{
    const CommandOptions parsed = parse({"-", "-y"});
    QCOMPARE(parsed.options, Options({{'y', {}}}));
    QCOMPARE(parsed.operands, Operands({"-"}));
}

void CommandOptionsTest::emptyArgumentsAndValuesStay()
{
    const CommandOptions parsed = parse({"", "--report=", "--method", ""});
    QCOMPARE(parsed.options, Options({{'\4', ""}, {'m', ""}}));
    QCOMPARE(parsed.operands, Operands({""}));
    QVERIFY(parsed.error.isEmpty());
}

void CommandOptionsTest::bytesStayAsTheyAre()
{
    const CommandOptions parsed = parse({"caf\xe9\xff", "two\nlines", "--report=\xfe;%2F"});
    QCOMPARE(parsed.operands, Operands({"caf\xe9\xff", "two\nlines"}));
    QCOMPARE(parsed.options, Options({{'\4', "\xfe;%2F"}}));
}

void CommandOptionsTest::aLongNameMayBeShortened()
{
    QCOMPARE(parse({"--rep=x", "--js"}).options, Options({{'\4', "x"}, {'\2', {}}}));
}

void CommandOptionsTest::anOptionWithoutShortFormHasNone()
{
    QVERIFY(!parse({QByteArray("-\2")}).error.isEmpty());
}

void CommandOptionsTest::whatIsWrongIsNamed_data()
{
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("an unknown letter")
        << QByteArrayList({"a", "-z"}) << QByteArray("unknown option: -z");
    QTest::newRow("an unknown letter in a cluster")
        << QByteArrayList({"a", "-yzq"}) << QByteArray("unknown option: -z");
    QTest::newRow("an unknown letter that begins a cluster")
        << QByteArrayList({"--yes", "-zy", "a"}) << QByteArray("unknown option: -z");
    QTest::newRow("an unknown name")
        << QByteArrayList({"--jason", "a"}) << QByteArray("unknown option: --jason");
    QTest::newRow("an unknown name with a value")
        << QByteArrayList({"a", "--level=3"}) << QByteArray("unknown option: --level=3");
    QTest::newRow("a letter without its value")
        << QByteArrayList({"a", "-m"}) << QByteArray("needs a value: -m");
    QTest::newRow("a name that has a letter, too, without its value")
        << QByteArrayList({"-y", "--method"}) << QByteArray("needs a value: --method");
    QTest::newRow("a value for none")
        << QByteArrayList({"--yes=5"}) << QByteArray("unknown option: --yes=5");
    QTest::newRow("a cluster without its value")
        << QByteArrayList({"-ym"}) << QByteArray("needs a value: -m");
    QTest::newRow("a name without its value")
        << QByteArrayList({"-y", "--report"}) << QByteArray("needs a value: --report");
}

void CommandOptionsTest::whatIsWrongIsNamed()
{
    QFETCH(QByteArrayList, arguments);
    QTEST(parse({arguments.begin(), arguments.end()}).error, "error");
}

void CommandOptionsTest::everyParseStartsAnew()
{
    QVERIFY(!parse({"-y", "-zq", "a"}).error.isEmpty());
    const CommandOptions parsed = parse({"-q", "a"});
    QCOMPARE(parsed.options, Options({{'q', {}}}));
    QCOMPARE(parsed.operands, Operands({"a"}));
    QVERIFY(parsed.error.isEmpty());
}

QTEST_APPLESS_MAIN(CommandOptionsTest)
#include "CommandOptionsTest.moc"
