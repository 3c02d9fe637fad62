#include "platform/UserDefaults.h"

#include "kit/Scratch.h"

#include <QTest>

namespace {

constexpr char settings[] = R"([General]
WipeMethod=6
text=seven
mixed=12 passes
negative=-3
padded="  8"
yes=yes
YES=YES
true=True
one=1
NO=NO
no=no
false=false
zero=0
two=2
nothing=
huge=99999999999999999999
list=1, 2
fraction=2.9
)";

} // namespace

class UserDefaultsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    void settingsStandBelowTheConfigurationFolder();
    void aSettingBeatsItsFallback();
    void aMissingSettingFallsBack();
    void withoutFallbackAMissingSettingIsZero();
    void anUnreadableFileCountsAsEmpty();
    void nothingIsWritten();
    void numbersAreReadAsTheirLeadingDigits_data();
    void numbersAreReadAsTheirLeadingDigits();
    void truthIsReadFromWordsAndNumbers_data();
    void truthIsReadFromWordsAndNumbers();
    void textIsReadAsANumber_data();
    void textIsReadAsANumber();

  private:
    Scratch scratch_;
    QByteArray file_;
};

void UserDefaultsTest::initTestCase()
{
    QVERIFY(!scratch_.folder("config").isEmpty() && !scratch_.folder("config/Vantorel").isEmpty());
    file_ = scratch_.file("config/Vantorel/Vantorel.ini", QByteArray(settings));
    QVERIFY(!file_.isEmpty());
    QVERIFY(qputenv("XDG_CONFIG_HOME", scratch_.path("config")));
}

void UserDefaultsTest::settingsStandBelowTheConfigurationFolder()
{
    QCOMPARE(UserDefaults({}).integer(QStringLiteral("WipeMethod")), std::int64_t(6));
}

void UserDefaultsTest::aSettingBeatsItsFallback()
{
    const UserDefaults defaults({{QStringLiteral("WipeMethod"), 4}, {QStringLiteral("no"), true}});
    QCOMPARE(defaults.integer(QStringLiteral("WipeMethod")), std::int64_t(6));
    QVERIFY(!defaults.boolean(QStringLiteral("no")));
}

void UserDefaultsTest::aMissingSettingFallsBack()
{
    const UserDefaults defaults(
        {{QStringLiteral("missing"), 4}, {QStringLiteral("missing, too"), true}});
    QCOMPARE(defaults.integer(QStringLiteral("missing")), std::int64_t(4));
    QVERIFY(defaults.boolean(QStringLiteral("missing, too")));
}

void UserDefaultsTest::withoutFallbackAMissingSettingIsZero()
{
    const UserDefaults defaults({});
    QCOMPARE(defaults.integer(QStringLiteral("missing")), std::int64_t(0));
    QVERIFY(!defaults.boolean(QStringLiteral("missing")));
}

void UserDefaultsTest::anUnreadableFileCountsAsEmpty()
{
    const Scratch other;
    QVERIFY(!other.folder("Vantorel").isEmpty() &&
            !other.folder("Vantorel/Vantorel.ini").isEmpty());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QFile::decodeName(other.path()));
    const UserDefaults defaults({{QStringLiteral("WipeMethod"), 4}});
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QFile::decodeName(scratch_.path("config")));
    QCOMPARE(defaults.integer(QStringLiteral("WipeMethod")), std::int64_t(4));
}

void UserDefaultsTest::nothingIsWritten()
{
    {
        const UserDefaults defaults({{QStringLiteral("new"), 4}});
        QCOMPARE(defaults.integer(QStringLiteral("new")), std::int64_t(4));
    }
    QCOMPARE(Scratch::content(file_), QByteArray(settings));
}

void UserDefaultsTest::numbersAreReadAsTheirLeadingDigits_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<qint64>("number");
    QTest::newRow("a number") << QStringLiteral("WipeMethod") << qint64(6);
    QTest::newRow("words") << QStringLiteral("text") << qint64(0);
    QTest::newRow("a number and words") << QStringLiteral("mixed") << qint64(12);
    QTest::newRow("below zero") << QStringLiteral("negative") << qint64(-3);
    QTest::newRow("blanks before") << QStringLiteral("padded") << qint64(8);
    QTest::newRow("nothing") << QStringLiteral("nothing") << qint64(0);
    QTest::newRow("a fraction") << QStringLiteral("fraction") << qint64(2);
    QTest::newRow("yes") << QStringLiteral("yes") << qint64(1);
}

void UserDefaultsTest::numbersAreReadAsTheirLeadingDigits()
{
    QFETCH(QString, key);
    QFETCH(qint64, number);
    QCOMPARE(qint64(UserDefaults({{key, 99}}).integer(key)), number);
}

void UserDefaultsTest::truthIsReadFromWordsAndNumbers_data()
{
    QTest::addColumn<bool>("truth");
    for (const char *word : {"yes", "YES", "true", "one", "two", "negative", "mixed"})
        QTest::newRow(word) << true;
    for (const char *word : {"no", "NO", "false", "zero", "nothing", "text"})
        QTest::newRow(word) << false;
}

void UserDefaultsTest::truthIsReadFromWordsAndNumbers()
{
    QFETCH(bool, truth);
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(UserDefaults({{key, !truth}}).boolean(key), truth);
}

void UserDefaultsTest::textIsReadAsANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("number");
    QTest::newRow("digits") << QStringLiteral("42") << qint64(42);
    QTest::newRow("zeros before") << QStringLiteral("007") << qint64(7);
    QTest::newRow("a minus alone") << QStringLiteral("-") << qint64(0);
    QTest::newRow("two minuses") << QStringLiteral("--1") << qint64(0);
    QTest::newRow("hexadecimal") << QStringLiteral("0x10") << qint64(0);
    QTest::newRow("digits of another script") << QStringLiteral(u"\u0664") << qint64(0);
    QTest::newRow("the largest") << QStringLiteral("9223372036854775807")
                                 << std::numeric_limits<qint64>::max();
    QTest::newRow("the smallest") << QStringLiteral("-9223372036854775808")
                                  << std::numeric_limits<qint64>::min();
    QTest::newRow("nothing") << QString() << qint64(0);
    QTest::newRow("blanks") << QStringLiteral("  \t") << qint64(0);
    QTest::newRow("blanks around") << QStringLiteral(" 5 ") << qint64(5);
    QTest::newRow("true with blanks") << QStringLiteral(" True ") << qint64(1);
    QTest::newRow("a word that only begins so") << QStringLiteral("yesterday") << qint64(0);
}

void UserDefaultsTest::textIsReadAsANumber()
{
    QFETCH(QString, text);
    QFETCH(qint64, number);
    QCOMPARE(qint64(UserDefaults::integerFromText(text)), number);
}

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaultsTest.moc"
