#include "platform/UserDefaults.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"

#include <QSignalSpy>
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

constexpr char damaged[] = "[General]\nWipeMethod=9\n[broken\nthis is no setting\n";

/// A configuration folder of its own, for stores made while it lives.
class ConfigurationFolder
{
  public:
    explicit ConfigurationFolder(QByteArray previous) : previous_(std::move(previous))
    {
        QVERIFY(!folder_.folder("Vantorel").isEmpty());
        use(folder_.path());
    }
    ~ConfigurationFolder() { use(previous_); }
    ConfigurationFolder(const ConfigurationFolder &) = delete;
    ConfigurationFolder &operator=(const ConfigurationFolder &) = delete;

    [[nodiscard]] QByteArray file() const { return folder_.path("Vantorel/Vantorel.ini"); }
    bool write(const QByteArray &content) const
    {
        return !folder_.file("Vantorel/Vantorel.ini", content).isEmpty();
    }
    [[nodiscard]] const Scratch &scratch() const { return folder_; }

  private:
    static void use(const QByteArray &folder)
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QFile::decodeName(folder));
    }

    QByteArray previous_;
    Scratch folder_;
};

const QString method = QStringLiteral("WipeMethod");
const QString table = QStringLiteral("colorProperties");

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
    void aLaterFallbackTakesThePlaceOfAnEarlierOne();
    void aFolderInTheFilesPlaceCountsAsEmpty();
    void nothingIsWritten();
    void numbersAreReadAsTheirLeadingDigits_data();
    void numbersAreReadAsTheirLeadingDigits();
    void truthIsReadFromWordsAndNumbers_data();
    void truthIsReadFromWordsAndNumbers();
    void textIsReadAsANumber_data();
    void textIsReadAsANumber();

    void aDamagedFileFallsBackToTheDefaultsWithOneLine();
    void aDamagedFileStaysUntilSomethingIsSet();
    void theFirstChangeMovesADamagedFileAside();
    void aKeyThatWouldBecomeAnotherIsDamage_data();
    void aKeyThatWouldBecomeAnotherIsDamage();
    void aNameAsideThatIsTakenIsLeftAlone();
    void takingAwayASettingLeavesADamagedFileAlone();
    void aMissingFileIsNoDamage();

    void aChangeIsReadBackByTheNextStore();
    void aChangeIsWrittenByTheEventLoop();
    void aStoreWritesAtItsEnd();
    void everyChangedKeyIsSignalledOnce();
    void equalValuesAreNotSignalled_data();
    void equalValuesAreNotSignalled();
    void whatTheFileSaysInWordsIsTheSameValue_data();
    void whatTheFileSaysInWordsIsTheSameValue();
    void aSettingThatIsTakenAwayIsSignalled();
    void theSignalComesWhenTheValueStands();

    void aTableIsOneValue();
    void aStoredTableReplacesItsFallbackWhole();
    void aGroupIsNoTable();
    void bytesComeBackAsTheyWere();
    void aReplacementIsAFreshStore();

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
    QCOMPARE(UserDefaults().integer(QStringLiteral("WipeMethod")), std::int64_t(6));
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
    const UserDefaults defaults;
    QCOMPARE(defaults.integer(QStringLiteral("missing")), std::int64_t(0));
    QVERIFY(!defaults.boolean(QStringLiteral("missing")));
}

void UserDefaultsTest::aLaterFallbackTakesThePlaceOfAnEarlierOne()
{
    UserDefaults defaults({{QStringLiteral("one more"), 4}, {QStringLiteral("missing"), 4}});
    defaults.registerDefaults({{QStringLiteral("missing"), 5}});
    QCOMPARE(defaults.integer(QStringLiteral("missing")), std::int64_t(5));
    QCOMPARE(defaults.integer(QStringLiteral("one more")), std::int64_t(4));
}

void UserDefaultsTest::aFolderInTheFilesPlaceCountsAsEmpty()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(!folder.scratch().folder("Vantorel/Vantorel.ini").isEmpty());
    const RecordedLog log;
    const UserDefaults defaults({{method, 4}});
    QCOMPARE(defaults.integer(method), std::int64_t(4));
    QCOMPARE(log.lines().size(), 1);
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

void UserDefaultsTest::aDamagedFileFallsBackToTheDefaultsWithOneLine()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(damaged));
    const RecordedLog log;
    const UserDefaults defaults({{method, 4}});
    QCOMPARE(defaults.integer(method), std::int64_t(4));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(log.lines().first().contains(QString::fromUtf8(folder.file())),
             qUtf8Printable(log.lines().first()));
    QVERIFY(log.lines().first().contains(QLatin1String("is damaged")));
}

void UserDefaultsTest::aDamagedFileStaysUntilSomethingIsSet()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(damaged));
    {
        UserDefaults defaults({{method, 4}});
        defaults.synchronize();
    }
    QCOMPARE(Scratch::content(folder.file()), QByteArray(damaged));
    QVERIFY(!Scratch::exists(folder.file() + ".damaged"));
}

void UserDefaultsTest::theFirstChangeMovesADamagedFileAside()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(damaged));
    const RecordedLog log;
    {
        UserDefaults defaults;
        defaults.setValue(method, 7);
        QCOMPARE(defaults.integer(method), std::int64_t(7));
    }
    QCOMPARE(Scratch::content(folder.file() + ".damaged"), QByteArray(damaged));
    QCOMPARE(Scratch::content(folder.file()), QByteArray("[General]\nWipeMethod=7\n"));
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(UserDefaults().integer(method), std::int64_t(7));
    QCOMPARE(log.lines().size(), 1);
}

void UserDefaultsTest::aKeyThatWouldBecomeAnotherIsDamage_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("before it") << QByteArray("/WipeMethod=9");
    QTest::newRow("behind it") << QByteArray("WipeMethod/=9");
    QTest::newRow("inside") << QByteArray("a//WipeMethod=9");
}

/// Else the next change of any setting would make it one that counts.
void UserDefaultsTest::aKeyThatWouldBecomeAnotherIsDamage()
{
    QFETCH(QByteArray, line);
    const QByteArray content = "[General]\n" + line + '\n';
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(content));
    const RecordedLog log;
    UserDefaults({{method, 4}}).setValue(QStringLiteral("AutoExit"), true);
    QCOMPARE(UserDefaults({{method, 4}}).integer(method), std::int64_t(4));
    QCOMPARE(Scratch::content(folder.file() + ".damaged"), content);
    QCOMPARE(log.lines().size(), 1);
}

void UserDefaultsTest::aNameAsideThatIsTakenIsLeftAlone()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(damaged));
    QVERIFY(!folder.scratch().file("Vantorel/Vantorel.ini.damaged", QByteArray("kept")).isEmpty());
    QVERIFY(!folder.scratch().link("Vantorel/Vantorel.ini.damaged-2", "nowhere").isEmpty());
    UserDefaults().setValue(method, 7);
    QCOMPARE(Scratch::content(folder.file() + ".damaged"), QByteArray("kept"));
    QCOMPARE(Scratch::content(folder.file() + ".damaged-3"), QByteArray(damaged));
}

void UserDefaultsTest::takingAwayASettingLeavesADamagedFileAlone()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write(damaged));
    UserDefaults().remove(method);
    QCOMPARE(Scratch::content(folder.file()), QByteArray(damaged));
}

void UserDefaultsTest::aMissingFileIsNoDamage()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    const RecordedLog log;
    UserDefaults().setValue(method, 7);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(Scratch::exists(folder.file()));
}

void UserDefaultsTest::aChangeIsReadBackByTheNextStore()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults().setValue(QStringLiteral("DarkMode"), true);
    UserDefaults().setValue(method, 12);
    QVERIFY(
        UserDefaults({{QStringLiteral("DarkMode"), false}}).boolean(QStringLiteral("DarkMode")));
    QCOMPARE(UserDefaults().integer(method), std::int64_t(12));
    QCOMPARE(UserDefaults().text(method), QStringLiteral("12"));
}

void UserDefaultsTest::aChangeIsWrittenByTheEventLoop()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults defaults;
    defaults.setValue(method, 7);
    QTRY_COMPARE(Scratch::content(folder.file()), QByteArray("[General]\nWipeMethod=7\n"));
}

void UserDefaultsTest::aStoreWritesAtItsEnd()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults().setValue(method, 7);
    QCOMPARE(Scratch::content(folder.file()), QByteArray("[General]\nWipeMethod=7\n"));
}

void UserDefaultsTest::everyChangedKeyIsSignalledOnce()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults defaults({{method, 4}});
    const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
    defaults.setValue(method, 7);
    defaults.setValue(QStringLiteral("DarkMode"), true);
    defaults.synchronize();
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0).first().toString(), method);
    QCOMPARE(spy.at(1).first().toString(), QStringLiteral("DarkMode"));
}

void UserDefaultsTest::equalValuesAreNotSignalled_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("the stored number") << method << QVariant(7);
    QTest::newRow("its text") << method << QVariant(QStringLiteral("7"));
    QTest::newRow("the fallback") << QStringLiteral("DarkMode") << QVariant(true);
    QTest::newRow("bytes") << QStringLiteral("bytes") << QVariant(QByteArray("\0a", 2));
    QTest::newRow("a table") << table << QVariant(QVariantMap{{QStringLiteral("a"), 1}});
}

void UserDefaultsTest::equalValuesAreNotSignalled()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults().setValue(method, 7);
    UserDefaults().setValue(QStringLiteral("bytes"), QByteArray("\0a", 2));
    UserDefaults().setValue(table, QVariantMap{{QStringLiteral("a"), 1}});
    UserDefaults defaults({{QStringLiteral("DarkMode"), true}});
    const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
    defaults.setValue(key, value);
    QCOMPARE(spy.size(), 0);
}

void UserDefaultsTest::whatTheFileSaysInWordsIsTheSameValue_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("signals_");
    QTest::newRow("a number") << method << QVariant(7) << 0;
    QTest::newRow("another number") << method << QVariant(8) << 1;
    QTest::newRow("a truth") << QStringLiteral("DarkMode") << QVariant(true) << 0;
    QTest::newRow("another truth") << QStringLiteral("DarkMode") << QVariant(false) << 1;
    QTest::newRow("nothing yet") << QStringLiteral("new") << QVariant(0) << 1;
}

void UserDefaultsTest::whatTheFileSaysInWordsIsTheSameValue()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(int, signals_);
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write("[General]\nWipeMethod=7\nDarkMode=true\n"));
    UserDefaults defaults;
    const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
    defaults.setValue(key, value);
    QCOMPARE(spy.size(), signals_);
}

void UserDefaultsTest::aSettingThatIsTakenAwayIsSignalled()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults defaults({{method, 4}});
    defaults.setValue(method, 7);
    const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
    defaults.remove(method);
    defaults.remove(method);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(defaults.integer(method), std::int64_t(4));
}

void UserDefaultsTest::theSignalComesWhenTheValueStands()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults defaults;
    std::int64_t seen = 0;
    connect(&defaults, &UserDefaults::valueChanged, this, [&] { seen = defaults.integer(method); });
    defaults.setValue(method, 7);
    QCOMPARE(seen, std::int64_t(7));
}

void UserDefaultsTest::aTableIsOneValue()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults().setValue(table, QVariantMap{{QStringLiteral("a_bg_light"), QByteArray("\1\2")}});
    const QByteArray content = Scratch::content(folder.file());
    QVERIFY2(content.startsWith("[General]\ncolorProperties="), content.constData());
    QCOMPARE(content.count('\n'), 2);
    const QVariantMap back = UserDefaults().value(table).toMap();
    QCOMPARE(back.size(), 1);
    QCOMPARE(back.value(QStringLiteral("a_bg_light")).toByteArray(), QByteArray("\1\2"));
}

void UserDefaultsTest::aStoredTableReplacesItsFallbackWhole()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    UserDefaults().setValue(table, QVariantMap{{QStringLiteral("a"), 1}});
    const UserDefaults defaults(
        {{table, QVariantMap{{QStringLiteral("a"), 2}, {QStringLiteral("b"), 2}}}});
    QCOMPARE(defaults.value(table).toMap().keys(), QStringList(QStringLiteral("a")));
    QCOMPARE(defaults.value(table).toMap().value(QStringLiteral("a")).toInt(), 1);
}

void UserDefaultsTest::aGroupIsNoTable()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QVERIFY(folder.write("[colorProperties]\na=1\n"));
    const UserDefaults defaults({{table, QVariantMap{{QStringLiteral("b"), 2}}}});
    QCOMPARE(defaults.value(table).toMap().keys(), QStringList(QStringLiteral("b")));
}

void UserDefaultsTest::bytesComeBackAsTheyWere()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(char(byte));
    UserDefaults().setValue(QStringLiteral("bytes"), bytes);
    QCOMPARE(UserDefaults().value(QStringLiteral("bytes")).toByteArray(), bytes);
}

void UserDefaultsTest::aReplacementIsAFreshStore()
{
    const ConfigurationFolder folder(scratch_.path("config"));
    const UserDefaults *before = &UserDefaults::standard();
    {
        const UserDefaults::Replacement replacement;
        QVERIFY(&UserDefaults::standard() != before);
        UserDefaults::standard().setValue(method, 7);
    }
    QCOMPARE(&UserDefaults::standard(), before);
    QCOMPARE(UserDefaults().integer(method), std::int64_t(7));
}

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaultsTest.moc"
