#include "app/update/UpdateChoice.h"

#include <QTest>

using UpdateChoice::Verdict;

Q_DECLARE_METATYPE(UpdateChoice::Verdict)
Q_DECLARE_METATYPE(AppcastItem)

namespace {

AppcastItem item(const char *version)
{
    AppcastItem item;
    item.properties[AppcastItem::versionKey] = QString::fromUtf8(version);
    item.enclosure = {QUrl(QStringLiteral("https://a.org/a.deb")), 1000,
                      QStringLiteral("application/zip"), QByteArray(64, 's')};
    return item;
}

AppcastItem with(const QString &key, const char *value)
{
    AppcastItem changed = item("2.0");
    changed.properties[key] = QString::fromLatin1(value);
    return changed;
}

template <class Change> AppcastItem withFile(const Change &change)
{
    AppcastItem changed = item("2.0");
    change(changed.enclosure);
    return changed;
}

UpdateChoice::Facts facts(const char *ours = "1.2.0")
{
    return {QVersionNumber::fromString(QLatin1String(ours)), QStringLiteral("linux"),
            QVersionNumber(6, 1, 0), QUrl(QStringLiteral("https://a.org/feed")), 1000};
}

} // namespace

class UpdateChoiceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void onlyANewerVersionIsOffered_data();
    void onlyANewerVersionIsOffered();
    void theSystemHasToFit_data();
    void theSystemHasToFit();
    void theFileHasToBeUsable_data();
    void theFileHasToBeUsable();
    void noItemIsNothingNew();
    void versionsAreDigitsAndDots_data();
    void versionsAreDigitsAndDots();
    void theFilesNameIsOurs();
};

void UpdateChoiceTest::onlyANewerVersionIsOffered_data()
{
    QTest::addColumn<QByteArray>("ours");
    QTest::addColumn<QByteArray>("theirs");
    QTest::addColumn<Verdict>("verdict");
    const auto row = [](const char *ours, const char *theirs, Verdict verdict) {
        QTest::addRow("%s to %s", ours, theirs)
            << QByteArray(ours) << QByteArray(theirs) << verdict;
    };
    row("1.2.0", "1.2.0", Verdict::NotNewer);
    row("1.2.0", "1.2", Verdict::NotNewer);
    row("1.2", "1.2.0.0", Verdict::NotNewer);
    row("1.2.0", "01.02", Verdict::NotNewer);
    row("1.2.0", "1.1.99", Verdict::NotNewer);
    row("1.2.0", "0", Verdict::NotNewer);
    row("1.2.0", "0.0.0", Verdict::NotNewer);
    row("1.2.0", "1.2.0.1", Verdict::Offer);
    row("1.2.0", "1.2.1", Verdict::Offer);
    row("1.9", "1.10", Verdict::Offer);
    row("1.10", "1.9", Verdict::NotNewer);
    row("1.2.0", "2", Verdict::Offer);
    row("0.1.0", "2147483647.2147483647", Verdict::Offer);
    row("1.2.0", "2147483648", Verdict::Unusable);
    row("1.2.0", "99999999999999999999999.0", Verdict::Unusable);
    row("1.2.0", "1.3beta", Verdict::Unusable);
    row("1.2.0", "v1.3", Verdict::Unusable);
    row("1.2.0", "-2.0", Verdict::Unusable);
    row("1.2.0", "+2.0", Verdict::Unusable);
    row("1.2.0", "", Verdict::Unusable);
    row("1.2.0", "newest", Verdict::Unusable);
}

void UpdateChoiceTest::onlyANewerVersionIsOffered()
{
    QFETCH(QByteArray, ours);
    QFETCH(QByteArray, theirs);
    QFETCH(Verdict, verdict);
    QCOMPARE(UpdateChoice::judge(item(theirs.constData()), facts(ours.constData())), verdict);
}

void UpdateChoiceTest::theSystemHasToFit_data()
{
    QTest::addColumn<AppcastItem>("item");
    QTest::addColumn<Verdict>("verdict");
    const QString system = AppcastItem::operatingSystemKey;
    const QString minimum = AppcastItem::minimumSystemKey;
    QTest::newRow("ours") << with(system, "linux") << Verdict::Offer;
    QTest::newRow("ours in other letters") << with(system, "Linux") << Verdict::Offer;
    QTest::newRow("any") << with(system, "") << Verdict::Offer;
    QTest::newRow("another") << with(system, "freebsd") << Verdict::OtherSystem;
    QTest::newRow("older") << with(minimum, "5.10") << Verdict::Offer;
    QTest::newRow("the same") << with(minimum, "6.1") << Verdict::Offer;
    QTest::newRow("newer") << with(minimum, "6.1.1") << Verdict::OtherSystem;
    QTest::newRow("no version") << with(minimum, "six") << Verdict::Unusable;
    AppcastItem older = with(system, "freebsd");
    older.properties[AppcastItem::versionKey] = QStringLiteral("1.0");
    QTest::newRow("another and not newer") << older << Verdict::NotNewer;
}

void UpdateChoiceTest::theSystemHasToFit()
{
    QFETCH(AppcastItem, item);
    QFETCH(Verdict, verdict);
    QCOMPARE(UpdateChoice::judge(item, facts()), verdict);
}

void UpdateChoiceTest::theFileHasToBeUsable_data()
{
    using File = AppcastItem::Enclosure;
    QTest::addColumn<AppcastItem>("item");
    QTest::newRow("none") << withFile([](File &file) { file = {}; });
    QTest::newRow("plain http") << withFile(
        [](File &file) { file.url.setScheme(QStringLiteral("http")); });
    QTest::newRow("no length") << withFile([](File &file) { file.length = 0; });
    QTest::newRow("a negative length") << withFile([](File &file) { file.length = -1; });
    QTest::newRow("too long") << withFile([](File &file) { file.length = 1001; });
    QTest::newRow("not signed") << withFile([](File &file) { file.signature.clear(); });
    QTest::newRow("half a signature") << withFile([](File &file) { file.signature.chop(32); });
}

void UpdateChoiceTest::theFileHasToBeUsable()
{
    QFETCH(AppcastItem, item);
    QCOMPARE(UpdateChoice::judge(item, facts()), Verdict::Unusable);
}

void UpdateChoiceTest::noItemIsNothingNew()
{
    QCOMPARE(UpdateChoice::judge(std::nullopt, facts()), Verdict::NotNewer);
    QCOMPARE(UpdateChoice::judge(AppcastItem(), facts()), Verdict::NotNewer);
}

void UpdateChoiceTest::versionsAreDigitsAndDots_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("version");
    const auto row = [](const char *text, const char *version) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(version);
    };
    row("1", "1");
    row("1.2.0", "1.2");
    row("007.1", "7.1");
    row("1.", "none");
    row(".1", "none");
    row("1..2", "none");
    row(" 1", "none");
    row("1 ", "none");
    row("1,2", "none");
    row("1/../../2", "none");
    row("\u0661.\u0662", "none");
    row("1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.22", "1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.22");
    row("1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.222", "none");
}

void UpdateChoiceTest::versionsAreDigitsAndDots()
{
    QFETCH(QString, text);
    QFETCH(QString, version);
    const auto read = UpdateChoice::version(text);
    QCOMPARE(read ? read->toString() : QStringLiteral("none"), version);
}

void UpdateChoiceTest::theFilesNameIsOurs()
{
    QCOMPARE(UpdateChoice::fileStem(QVersionNumber(1, 2, 3)), QByteArray("Vantorel-1.2.3"));
    const auto extension = [](const char *type) {
        return UpdateChoice::fileExtension(QString::fromLatin1(type));
    };
    QCOMPARE(extension("application/vnd.debian.binary-package"), QByteArray(".deb"));
    QCOMPARE(extension("Application/ZIP"), QByteArray(".zip"));
    QCOMPARE(extension("application/gzip"), QByteArray(".tar.gz"));
    QCOMPARE(extension("application/x-desktop"), QByteArray());
    QCOMPARE(extension("../evil.desktop"), QByteArray());
    QCOMPARE(extension(""), QByteArray());
}

QTEST_MAIN(UpdateChoiceTest)
#include "UpdateChoiceTest.moc"
