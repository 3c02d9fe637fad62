#include "ui/ViewLayouts.h"

#include <QTest>

#include <map>

namespace {

using Places = std::map<QString, QRect>;

Places dropPlaces(const ViewRuler &ruler, double drag = 0)
{
    const DropLayout at = DropLayout::of(ruler, drag);
    return {{QStringLiteral("zone"), at.zone},         {QStringLiteral("image"), at.image},
            {QStringLiteral("heading"), at.heading},   {QStringLiteral("sentence"), at.sentence},
            {QStringLiteral("button"), at.button},     {QStringLiteral("hint"), at.hint},
            {QStringLiteral("method line"), at.method}};
}

Places readyPlaces(const ViewRuler &ruler)
{
    const ReadyLayout at = ReadyLayout::of(ruler);
    return {{QStringLiteral("count"), at.count},
            {QStringLiteral("folders"), at.folders},
            {QStringLiteral("size"), at.size},
            {QStringLiteral("work"), at.work},
            {QStringLiteral("table"), at.table},
            {QStringLiteral("method label"), at.methodLabel},
            {QStringLiteral("passes label"), at.passesLabel},
            {QStringLiteral("selector"), at.selector},
            {QStringLiteral("strip"), at.passStrip},
            {QStringLiteral("description"), at.description},
            {QStringLiteral("caution"), at.caution},
            {QStringLiteral("line"), at.line},
            {QStringLiteral("warning"), at.warning},
            {QStringLiteral("start"), at.start}};
}

Places erasingPlaces(const ViewRuler &ruler)
{
    const ErasingLayout at = ErasingLayout::of(ruler, 140);
    return {{QStringLiteral("icon"), at.icon},
            {QStringLiteral("percent"), at.percent},
            {QStringLiteral("amount"), at.amount},
            {QStringLiteral("remaining"), at.remaining},
            {QStringLiteral("remaining label"), at.remainingLabel},
            {QStringLiteral("progress"), at.progress},
            {QStringLiteral("throughput"), at.figures[0]},
            {QStringLiteral("elapsed"), at.figures[1]},
            {QStringLiteral("wiped"), at.figures[2]},
            {QStringLiteral("failed"), at.figures[3]},
            {QStringLiteral("table"), at.table},
            {QStringLiteral("method"), at.method},
            {QStringLiteral("strip"), at.passStrip},
            {QStringLiteral("pass"), at.pass}};
}

Places finishedPlaces(const ViewRuler &ruler, bool hasFailures)
{
    const FinishedLayout at = FinishedLayout::of(ruler, hasFailures);
    return {{QStringLiteral("picture"), at.picture},
            {QStringLiteral("badge"), at.badge},
            {QStringLiteral("result"), at.result},
            {QStringLiteral("caption"), at.caption},
            {QStringLiteral("card"), at.card},
            {QStringLiteral("method in card"), at.parts[0]},
            {QStringLiteral("elapsed in card"), at.parts[1]},
            {QStringLiteral("failed in card"), at.parts[2]},
            {QStringLiteral("first line in card"), at.lines[0]},
            {QStringLiteral("second line in card"), at.lines[1]},
            {QStringLiteral("band"), at.band},
            {QStringLiteral("button in band"), at.bandButton},
            {QStringLiteral("button"), at.button},
            {QStringLiteral("note"), at.note}};
}

Places preferencesPlaces(const ViewRuler &ruler)
{
    const PreferencesLayout at = PreferencesLayout::of(ruler, 140, 120);
    return {{QStringLiteral("heading"), at.heading},
            {QStringLiteral("general label"), at.groups[0].label},
            {QStringLiteral("general"), at.groups[0].card},
            {QStringLiteral("updates label"), at.groups[1].label},
            {QStringLiteral("updates"), at.groups[1].card},
            {QStringLiteral("log label"), at.groups[2].label},
            {QStringLiteral("log"), at.groups[2].card},
            {QStringLiteral("version"), at.version},
            {QStringLiteral("contact"), at.contact},
            {QStringLiteral("done"), at.done}};
}

Places placesOf(const QString &view, const ViewRuler &ruler)
{
    if (view == QStringLiteral("drop"))
        return dropPlaces(ruler);
    if (view == QStringLiteral("drop, dragged over"))
        return dropPlaces(ruler, 1);
    if (view == QStringLiteral("ready"))
        return readyPlaces(ruler);
    if (view == QStringLiteral("erasing"))
        return erasingPlaces(ruler);
    if (view == QStringLiteral("preferences"))
        return preferencesPlaces(ruler);
    return finishedPlaces(ruler, view == QStringLiteral("finished with failures"));
}

struct Row
{
    const char *element;
    QRect place;
};

void addRows(const char *view, QSize size, double factor, const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        QTest::addRow("%s: %s, %dx%d, factor %g", view, row.element, size.width(), size.height(),
                      factor)
            << QString::fromUtf8(view) << size << factor << QString::fromUtf8(row.element)
            << row.place;
    }
}

constexpr QSize natural(720, 520);
constexpr QSize smallest(640, 464);
constexpr QSize large(1000, 800);
constexpr QSize grown(1080, 780); ///< the natural one at a font 1.5 times as large

const std::vector<QSize> manySizes{smallest, natural, large, QSize(1400, 600), QSize(640, 900)};

} // namespace

class ViewLayoutsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anElementStandsAtItsPlace_data();
    void anElementStandsAtItsPlace();
    void nothingLeavesTheView_data();
    void nothingLeavesTheView();
    void tablesKeepTheirSmallestNumberOfRows();
    void theStripMakesWayForTheMethodsName();
    void theBandsMarginGrowsWithTheFont();
    void aLongVersionMovesTheLink();
    void aRowPlacesItsParts_data();
    void aRowPlacesItsParts();
};

void ViewLayoutsTest::anElementStandsAtItsPlace_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QString>("element");
    QTest::addColumn<QRect>("place");

    addRows("drop", natural, 1,
            {{"zone", {32, 40, 656, 416}},
             {"image", {240, 72, 240, 176}},
             {"heading", {32, 272, 656, 28}},
             {"sentence", {32, 304, 656, 20}},
             {"button", {248, 352, 224, 32}},
             {"hint", {32, 396, 656, 16}},
             {"method line", {32, 476, 656, 16}}});
    addRows("drop, dragged over", natural, 1,
            {{"zone", {32, 40, 656, 416}},
             {"image", {240, 104, 240, 176}},
             {"heading", {32, 304, 656, 28}},
             {"sentence", {32, 336, 656, 20}},
             {"button", {248, 352, 224, 32}}});
    addRows("drop", large, 1,
            {{"zone", {32, 40, 936, 696}},
             {"image", {380, 212, 240, 176}},
             {"button", {388, 492, 224, 32}},
             {"method line", {32, 756, 936, 16}}});
    addRows("drop", smallest, 1,
            {{"zone", {32, 40, 576, 360}},
             {"image", {200, 44, 240, 176}},
             {"hint", {32, 368, 576, 16}},
             {"method line", {32, 420, 576, 16}}});
    addRows("drop", grown, 1.5,
            {{"zone", {32, 60, 1016, 624}},
             {"image", {360, 108, 360, 264}},
             {"heading", {32, 408, 1016, 42}},
             {"button", {372, 528, 336, 48}},
             {"method line", {32, 714, 1016, 24}}});

    addRows("ready", natural, 1,
            {{"count", {32, 20, 320, 32}},
             {"folders", {32, 52, 320, 20}},
             {"size", {368, 20, 320, 32}},
             {"work", {368, 52, 320, 20}},
             {"table", {32, 88, 656, 164}},
             {"method label", {32, 266, 296, 16}},
             {"passes label", {352, 266, 336, 16}},
             {"selector", {32, 288, 296, 32}},
             {"strip", {352, 296, 336, 16}},
             {"description", {32, 328, 656, 54}},
             {"caution", {32, 392, 656, 32}},
             {"line", {32, 440, 656, 1}},
             {"warning", {32, 466, 496, 20}},
             {"start", {544, 456, 144, 40}}});
    addRows("ready", large, 1,
            {{"size", {508, 20, 460, 32}},
             {"table", {32, 88, 936, 444}},
             {"selector", {32, 568, 296, 32}},
             {"strip", {352, 576, 336, 16}},
             {"caution", {32, 672, 936, 32}},
             {"line", {32, 720, 936, 1}},
             {"start", {824, 736, 144, 40}}});
    addRows("ready", smallest, 1,
            {{"table", {32, 88, 576, 108}},
             {"selector", {32, 232, 296, 32}},
             {"strip", {352, 240, 256, 16}},
             {"start", {464, 400, 144, 40}}});
    addRows("ready", grown, 1.5,
            {{"count", {32, 30, 500, 48}},
             {"table", {32, 132, 1016, 246}},
             {"selector", {32, 432, 444, 48}},
             {"strip", {512, 444, 504, 24}},
             {"start", {832, 684, 216, 60}}});

    addRows("erasing", natural, 1,
            {{"icon", {32, 20, 48, 48}},
             {"percent", {96, 16, 128, 32}},
             {"amount", {96, 48, 288, 20}},
             {"remaining", {240, 16, 448, 32}},
             {"remaining label", {400, 48, 288, 20}},
             {"progress", {32, 84, 656, 8}},
             {"throughput", {32, 104, 156, 36}},
             {"elapsed", {196, 104, 156, 36}},
             {"wiped", {360, 104, 156, 36}},
             {"failed", {524, 104, 164, 36}},
             {"table", {32, 152, 656, 304}},
             {"method", {32, 472, 200, 16}},
             {"strip", {248, 472, 336, 21}},
             {"pass", {592, 472, 96, 16}}});
    addRows("erasing", large, 1,
            {{"progress", {32, 84, 936, 8}},
             {"elapsed", {196, 104, 156, 36}},
             {"table", {32, 152, 936, 584}},
             {"method", {32, 752, 480, 16}},
             {"strip", {528, 752, 336, 21}},
             {"pass", {872, 752, 96, 16}}});
    addRows("erasing", smallest, 1,
            {{"failed", {524, 104, 84, 36}},
             {"table", {32, 152, 576, 248}},
             {"method", {32, 416, 140, 16}},
             {"strip", {188, 416, 316, 21}}});
    addRows("erasing", grown, 1.5,
            {{"icon", {32, 30, 72, 72}},
             {"percent", {128, 24, 192, 48}},
             {"wiped", {524, 156, 238, 54}},
             {"table", {32, 228, 1016, 456}},
             {"strip", {388, 708, 504, 32}}});

    addRows("finished", natural, 1,
            {{"picture", {320, 64, 80, 80}},
             {"result", {32, 168, 656, 36}},
             {"caption", {32, 208, 656, 20}},
             {"card", {104, 248, 512, 64}},
             {"method in card", {0, 0, 224, 64}},
             {"elapsed in card", {224, 0, 160, 64}},
             {"failed in card", {384, 0, 128, 64}},
             {"first line in card", {224, 12, 1, 40}},
             {"second line in card", {384, 12, 1, 40}},
             {"button", {280, 352, 160, 32}},
             {"note", {32, 476, 656, 16}}});
    addRows("finished with failures", natural, 1,
            {{"badge", {374, 116, 32, 32}},
             {"band", {104, 328, 512, 48}},
             {"button in band", {376, 8, 128, 32}},
             {"button", {280, 408, 160, 32}}});
    addRows("finished", large, 1,
            {{"picture", {460, 204, 80, 80}},
             {"card", {244, 388, 512, 64}},
             {"button", {420, 492, 160, 32}},
             {"note", {32, 756, 936, 16}}});
    addRows("finished with failures", smallest, 1,
            {{"picture", {280, 36, 80, 80}},
             {"card", {64, 220, 512, 64}},
             {"button", {240, 380, 160, 32}},
             {"note", {32, 420, 576, 16}}});
    addRows("finished with failures", grown, 1.5,
            {{"picture", {480, 96, 120, 120}},
             {"card", {156, 372, 768, 96}},
             {"button in band", {564, 12, 192, 48}},
             {"button", {420, 612, 240, 48}}});

    addRows("preferences", natural, 1,
            {{"heading", {32, 20, 656, 28}},
             {"general label", {32, 64, 220, 16}},
             {"general", {32, 84, 656, 144}},
             {"updates label", {32, 244, 220, 16}},
             {"updates", {32, 264, 656, 108}},
             {"log label", {32, 388, 220, 16}},
             {"log", {32, 408, 656, 36}},
             {"version", {32, 468, 140, 16}},
             {"contact", {192, 468, 120, 16}},
             {"done", {592, 460, 96, 32}}});
    addRows("preferences", large, 1,
            {{"heading", {32, 20, 936, 28}},
             {"log", {32, 408, 936, 36}},
             {"version", {32, 748, 140, 16}},
             {"done", {872, 740, 96, 32}}});
    addRows("preferences", smallest, 1,
            {{"heading", {32, 12, 576, 28}},
             {"general label", {32, 48, 220, 16}},
             {"general", {32, 68, 576, 144}},
             {"updates", {32, 240, 576, 108}},
             {"log", {32, 376, 576, 36}},
             {"done", {512, 420, 96, 32}}});
    addRows("preferences", grown, 1.5,
            {{"general", {32, 126, 1016, 216}},
             {"log", {32, 612, 1016, 54}},
             {"contact", {272, 702, 120, 24}},
             {"done", {904, 690, 144, 48}}});
}

void ViewLayoutsTest::anElementStandsAtItsPlace()
{
    QFETCH(QString, view);
    QFETCH(QSize, size);
    QFETCH(double, factor);
    QFETCH(QString, element);
    const Places places = placesOf(view, ViewRuler(size, factor));
    QVERIFY(places.contains(element));
    QTEST(places.at(element), "place");
}

void ViewLayoutsTest::nothingLeavesTheView_data()
{
    QTest::addColumn<QString>("view");
    for (const char *view : {"drop", "drop, dragged over", "ready", "erasing", "finished",
                             "finished with failures", "preferences"})
        QTest::newRow(view) << QString::fromUtf8(view);
}

void ViewLayoutsTest::nothingLeavesTheView()
{
    QFETCH(QString, view);
    for (const double factor : {1.0, 1.2, 1.5, 1.6}) {
        for (const QSize &size : manySizes) {
            const QSize all = size * factor;
            for (const auto &[element, place] : placesOf(view, ViewRuler(all, factor))) {
                const QByteArray what = element.toUtf8();
                QVERIFY2(!place.isEmpty(), what.constData());
                QVERIFY2(QRect(QPoint(), all).contains(place), what.constData());
            }
        }
    }
}

void ViewLayoutsTest::tablesKeepTheirSmallestNumberOfRows()
{
    constexpr int head = 24;
    constexpr int row = 28;
    const ViewRuler ruler(smallest, 1);
    QCOMPARE(ReadyLayout::of(ruler).table.height(), head + 3 * row);
    QVERIFY(ErasingLayout::of(ruler, 0).table.height() >= head + 4 * row);
}

void ViewLayoutsTest::theStripMakesWayForTheMethodsName()
{
    const ViewRuler ruler(smallest, 1);
    const ErasingLayout layout = ErasingLayout::of(ruler, 200);
    QCOMPARE(layout.method.width(), 200);
    QCOMPARE(layout.passStrip, QRect(248, 416, 256, 21));
    // It keeps as much as 35 cells need.
    QCOMPARE(ErasingLayout::of(ruler, 1000).passStrip.width(), 160);
}

void ViewLayoutsTest::theBandsMarginGrowsWithTheFont()
{
    QCOMPARE(FinishedLayout::of(ViewRuler(natural, 1), true).bandMargin, 16);
    QCOMPARE(FinishedLayout::of(ViewRuler(grown, 1.5), true).bandMargin, 24);
}

void ViewLayoutsTest::aLongVersionMovesTheLink()
{
    const PreferencesLayout layout = PreferencesLayout::of(ViewRuler(natural, 1), 200, 120);
    QCOMPARE(layout.version, QRect(32, 468, 200, 16));
    QCOMPARE(layout.contact.x(), 248);
}

void ViewLayoutsTest::aRowPlacesItsParts_data()
{
    QTest::addColumn<int>("labelWidth");
    QTest::addColumn<int>("remarkWidth");
    QTest::addColumn<QSize>("control");
    QTest::addColumn<QRect>("label");
    QTest::addColumn<QRect>("remark");
    QTest::addColumn<QRect>("controlPlace");
    QTest::newRow("a switch") << 192 << 200 << QSize(36, 20) << QRect(16, 8, 192, 20)
                              << QRect(236, 8, 356, 20) << QRect(604, 8, 36, 20);
    QTest::newRow("a selector") << 80 << 0 << QSize(262, 28) << QRect(16, 8, 80, 20)
                                << QRect(236, 8, 130, 20) << QRect(378, 4, 262, 28);
    QTest::newRow("a long remark begins further left")
        << 42 << 210 << QSize(262, 28) << QRect(16, 8, 42, 20) << QRect(156, 8, 210, 20)
        << QRect(378, 4, 262, 28);
    QTest::newRow("but not over the label") << 200 << 210 << QSize(262, 28) << QRect(16, 8, 200, 20)
                                            << QRect(228, 8, 138, 20) << QRect(378, 4, 262, 28);
}

void ViewLayoutsTest::aRowPlacesItsParts()
{
    QFETCH(int, labelWidth);
    QFETCH(int, remarkWidth);
    QFETCH(QSize, control);
    const auto layout =
        PreferenceRowLayout::of(ViewRuler({656, 36}, 1), {labelWidth, remarkWidth}, control);
    QTEST(layout.label, "label");
    QTEST(layout.remark, "remark");
    QTEST(layout.control, "controlPlace");
}

QTEST_APPLESS_MAIN(ViewLayoutsTest)
#include "ViewLayoutsTest.moc"
