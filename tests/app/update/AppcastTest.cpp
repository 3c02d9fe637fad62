#include "app/update/Appcast.h"
#include "app/update/AppcastReader.h"

#include <QTest>

namespace {

const QByteArray start = R"(<?xml version="1.0" encoding="UTF-8"?>
<rss version="2.0" xmlns:sparkle="urn:one" xmlns:vantorel="urn:two" xmlns:media="urn:three">)";

QByteArray feed(const QByteArray &inChannel)
{
    return start + "<channel><title>Vantorel</title>" + inChannel + "</channel></rss>";
}

/// The first item of a feed whose only item holds this.
AppcastItem itemOf(const QByteArray &inItem, const QByteArray &attributes = {})
{
    const auto appcast = Appcast::read(feed("<item" + attributes + ">" + inItem + "</item>"));
    return appcast ? appcast->items()->at(0) : AppcastItem();
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class AppcastTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aReleaseIsReadWhole();
    void attributesOfTheItemAreProperties();
    void theFirstOfTwoCounts();
    void itemsKeepTheFeedsOrder();
    void noListIsAnotherThingThanAnEmptyOne();
    void whatIsNotKnownIsLeftOut();
    void aNameCountsWithItsPrefix();
    void textsAreTrimmedAndDecoded();
    void whatIsNoFeedIsRefused_data();
    void whatIsNoFeedIsRefused();
    void aDocumentTypeIsRefused_data();
    void aDocumentTypeIsRefused();
    void notesAreCutAndOtherTextsNotTaken();
    void nestingCostsNoStack();
    void anEnclosureThatMakesNoSenseSaysNothing();
};

void AppcastTest::aReleaseIsReadWhole()
{
    const AppcastItem item = itemOf(R"(
        <title>Version 1.2</title>
        <pubDate>Tue, 15 Nov 2022 06:59:11 +0000</pubDate>
        <description>Faster &amp; safer</description>
        <sparkle:relType>beta</sparkle:relType>
        <vantorel:version>1.2</vantorel:version>
        <vantorel:operatingSystem>linux</vantorel:operatingSystem>
        <vantorel:minimumSystem>5.10</vantorel:minimumSystem>
        <enclosure url="https://example.org/a.zip?b=c&amp;d=e" length="1234" type="application/zip"
                   vantorel:signature="AQID"/>)");
    const QMap<QString, QString> properties{
        {text("title"), text("Version 1.2")},
        {text("pubDate"), text("Tue, 15 Nov 2022 06:59:11 +0000")},
        {text("description"), text("Faster & safer")},
        {text("sparkle:relType"), text("beta")},
        {text("vantorel:version"), text("1.2")},
        {text("vantorel:operatingSystem"), text("linux")},
        {text("vantorel:minimumSystem"), text("5.10")},
    };
    QCOMPARE(item.properties, properties);
    QCOMPARE(item.enclosure.url, QUrl(text("https://example.org/a.zip?b=c&d=e")));
    QCOMPARE(item.enclosure.length, std::int64_t(1234));
    QCOMPARE(item.enclosure.type, text("application/zip"));
    QCOMPARE(item.enclosure.signature, QByteArray("\1\2\3"));
}

void AppcastTest::attributesOfTheItemAreProperties()
{
    const AppcastItem item = itemOf("", " sparkle:relType=' alpha ' id='7'");
    QCOMPARE(item.properties.size(), 1);
    QCOMPARE(item.property(AppcastItem::releaseTypeKey), text("alpha"));
}

void AppcastTest::theFirstOfTwoCounts()
{
    const AppcastItem item =
        itemOf("<sparkle:relType>beta</sparkle:relType><vantorel:version>1</vantorel:version>"
               "<vantorel:version>2</vantorel:version><enclosure url='https://a.org/1'/>"
               "<enclosure url='https://a.org/2'/>",
               " sparkle:relType='alpha'");
    QCOMPARE(item.property(AppcastItem::releaseTypeKey), text("alpha"));
    QCOMPARE(item.property(AppcastItem::versionKey), text("1"));
    QCOMPARE(item.enclosure.url, QUrl(text("https://a.org/1")));
}

void AppcastTest::itemsKeepTheFeedsOrder()
{
    const auto appcast =
        Appcast::read(feed("<item><title>3</title></item><item/><item><title>9</title></item><item>"
                           "<title>1</title></item>"));
    QStringList titles;
    for (const AppcastItem &item : *appcast->items())
        titles.append(item.property(AppcastItem::titleKey));
    QCOMPARE(titles, QStringList({text("3"), QString(), text("9"), text("1")}));
    QVERIFY(appcast->items()->at(1).isEmpty());
}

void AppcastTest::noListIsAnotherThingThanAnEmptyOne()
{
    const auto without = Appcast::read(start + "</rss>");
    QVERIFY(without);
    QVERIFY(!without->items());
    const auto empty = Appcast::read(feed(""));
    QVERIFY(empty);
    QVERIFY(empty->items());
    QVERIFY(empty->items()->empty());
}

void AppcastTest::whatIsNotKnownIsLeftOut()
{
    const AppcastItem item = itemOf("<guid>x</guid><a><title>inner</title><item/></a>"
                                    "<!-- a comment --><?an instruction?><title>outer</title>");
    QCOMPARE(item.properties.size(), 1);
    QCOMPARE(item.property(AppcastItem::titleKey), text("outer"));
}

void AppcastTest::aNameCountsWithItsPrefix()
{
    const AppcastItem item = itemOf("<media:title>picture</media:title><relType>beta</relType>"
                                    "<media:relType>beta</media:relType><title>own</title>");
    QCOMPARE(item.property(AppcastItem::titleKey), text("own"));
    QVERIFY(item.property(AppcastItem::releaseTypeKey).isNull());
}

void AppcastTest::textsAreTrimmedAndDecoded()
{
    const AppcastItem item = itemOf("<sparkle:relType>\n  beta\n  </sparkle:relType>"
                                    "<description> a<b>b</b><![CDATA[<p>&amp;]]>&#xE9;&lt; "
                                    "</description><vantorel:version/>");
    QCOMPARE(item.property(AppcastItem::releaseTypeKey), text("beta"));
    QCOMPARE(item.property(AppcastItem::descriptionKey), text("ab<p>&amp;\u00E9<"));
    QVERIFY(item.properties.contains(AppcastItem::versionKey));
}

void AppcastTest::whatIsNoFeedIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray("  \n");
    QTest::newRow("no XML") << QByteArray("404 Not Found");
    QTest::newRow("another root") << QByteArray("<html><channel/></html>");
    QTest::newRow("cut off") << feed("<item/>").chopped(6);
    QTest::newRow("cut off in a tag") << feed("<item/>").chopped(12);
    QTest::newRow("tags that cross") << feed("<item><title></item></title>");
    QTest::newRow("an attribute twice") << feed("<item a='1' a='2'/>");
    QTest::newRow("more behind the end") << feed("") + "<rss/>";
    QTest::newRow("a bare ampersand") << feed("<item><title>a & b</title></item>");
    QTest::newRow("an entity of nobody's") << feed("<item><title>&eacute;</title></item>");
    QTest::newRow("a prefix of nobody's") << feed("<item><dc:title>a</dc:title></item>");
    QTest::newRow("no UTF-8") << feed("<item><title>\xFF\xFE</title></item>");
    QTest::newRow("a NUL") << feed(QByteArray("<item><title>a\0b</title></item>", 32));
    QTest::newRow("an encoding of nobody's")
        << QByteArray("<?xml version='1.0' encoding='x-none'?><rss/>");
    QTest::newRow("compressed") << QByteArray::fromHex("1f8b0800000000000003");
}

void AppcastTest::whatIsNoFeedIsRefused()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!Appcast::read(bytes));
}

void AppcastTest::aDocumentTypeIsRefused_data()
{
    QTest::addColumn<QByteArray>("declaration");
    QTest::newRow("empty") << QByteArray("<!DOCTYPE rss>");
    QTest::newRow("an entity") << QByteArray("<!DOCTYPE rss [<!ENTITY e 'x'>]>");
    QTest::newRow("a file") << QByteArray(
        "<!DOCTYPE rss [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>");
    QTest::newRow("entities of entities")
        << QByteArray("<!DOCTYPE rss [<!ENTITY a 'xxxxxxxxxx'><!ENTITY e '&a;&a;&a;&a;'>]>");
    QTest::newRow("elsewhere") << QByteArray("<!DOCTYPE rss SYSTEM 'http://127.0.0.1/rss.dtd'>");
}

void AppcastTest::aDocumentTypeIsRefused()
{
    QFETCH(QByteArray, declaration);
    const QByteArray rest = "<rss><channel><item><title>x</title></item></channel></rss>";
    QVERIFY(Appcast::read(rest));
    QVERIFY(!Appcast::read(declaration + rest));
}

void AppcastTest::notesAreCutAndOtherTextsNotTaken()
{
    const QByteArray longest(AppcastReader::longestText, 'x');
    const QByteArray notes(AppcastReader::longestNotes + 1, 'x');
    QCOMPARE(itemOf("<description>" + notes + "</description>")
                 .property(AppcastItem::descriptionKey)
                 .size(),
             AppcastReader::longestNotes);
    QVERIFY(!itemOf("<pubDate>" + longest + "</pubDate>").isEmpty());
    QVERIFY(!Appcast::read(feed("<item><pubDate>" + longest + "x</pubDate></item>")));
    QVERIFY(!Appcast::read(feed("<item pubDate='" + longest + "x'/>")));
    QVERIFY(!Appcast::read(feed("<item><enclosure url='" + longest + "x'/></item>")));
    QVERIFY(Appcast::read(feed("<item><guid>" + longest + "x</guid></item>")));
}

void AppcastTest::nestingCostsNoStack()
{
    constexpr int depth = 60'000;
    const QByteArray nested =
        QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    QCOMPARE(
        itemOf("<description>x" + nested + "y</description>").property(AppcastItem::descriptionKey),
        text("xy"));
    QCOMPARE(itemOf(nested + "<title>t</title>").property(AppcastItem::titleKey), text("t"));
}

void AppcastTest::anEnclosureThatMakesNoSenseSaysNothing()
{
    const auto enclosure = itemOf("<enclosure url='https://a b/' length='12 MB' "
                                  "vantorel:signature='not base64!'/>")
                               .enclosure;
    QVERIFY(!enclosure.url.isValid());
    QCOMPARE(enclosure.length, std::int64_t(0));
    QVERIFY(enclosure.signature.isEmpty());
}

QTEST_MAIN(AppcastTest)
#include "AppcastTest.moc"
