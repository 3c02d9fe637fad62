#include "app/ErasingPresenter.h"

#include "app/Announcer.h"
#include "app/run/EraseRun.h"
#include "app/run/Items.h"
#include "ui/ErasingView.h"
#include "ui/Figure.h"
#include "ui/QueueTable.h"
#include "ui/QueueTableModel.h"
#include "ui/ThemedPreferences.h"

#include <QSignalSpy>
#include <QTest>

namespace {

constexpr std::int64_t threePasses = 4;
constexpr std::int64_t start = 1000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// A run over items of 100 bytes, as far as the test says, and the view that shows it.
struct Scene
{
    explicit Scene(int count)
    {
        for (int at = 0; at < count; ++at)
            items.push_back(Items::at("/folder/" + QByteArray::number(at), 100));
        run.addObjectsFromArray(items);
        run.begin(start);
        rows.setQueueArray(run.queueArray());
        view.table()->setModel(&rows);
        view.resize(ContentView::naturalSize());
        view.show();
        QObject::connect(announcer, &Announcer::announced,
                         [this](const QString &words) { heard.append(words); });
        presenter.begin(threePasses, text("3-Pass DoD 5220.22-M (E)"));
    }

    void write(double bytes)
    {
        run.queueStatsObject()->setBytesWritten(bytes);
        run.updateProgressBar();
    }
    void refresh(int current, double bytesPerSecond = 0)
    {
        const QueueArray::Item &item = items[std::size_t(current)];
        item->setWipe_method(threePasses);
        presenter.refresh(run, item.get(), bytesPerSecond, start + 10);
    }

    ThemedPreferences preferences;
    EraseRun run;
    QueueArray::Items items;
    QWidget window;
    QueueTableModel rows;
    ErasingView view;
    Announcer *announcer = new Announcer(&window);
    ErasingPresenter presenter{&view, &rows, announcer};
    QStringList heard;
};

} // namespace

class ErasingPresenterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theFirstSecondHasNeitherTimeNorThroughput();
    void theFiguresAreThoseOfTheRun();
    void barAndPercentageSayTheSame();
    void thePassIsThatOfTheFileInWork();
    void anEmptyFileHasNoPass();
    void aRunWithoutAFileKeepsItsRows();
    void theRowsThatWereDoneAreDrawnAgain();
    void theRowInWorkStaysInView();
    void progressIsSaidAtEveryTenth();
    void onlyTheFirstFailureIsSaid();
    void theNextRunIsSaidAnew();
};

void ErasingPresenterTest::theFirstSecondHasNeitherTimeNorThroughput()
{
    Scene scene(3);
    scene.run.updateBPSValue();
    scene.refresh(0);
    QCOMPARE(scene.view.remaining()->text(), text("--"));
    QCOMPARE(scene.view.throughput()->value(), text("0 Bytes/s"));
    QCOMPARE(scene.view.percent()->text(), text("0 %"));
    QCOMPARE(scene.view.amount()->text(), text("0 Bytes of 300 Bytes"));
    QCOMPARE(scene.view.wiped()->value(), text("0"));
}

void ErasingPresenterTest::theFiguresAreThoseOfTheRun()
{
    Scene scene(3);
    scene.write(125);
    QueueStatsObject &stats = *scene.run.queueStatsObject();
    stats.setTimeRemaining(245);
    stats.setTotalFilesWiped(1);
    stats.setFilesFailed(1);
    scene.refresh(2, 42.18e6);
    QCOMPARE(scene.view.percent()->text(), text("41 %"));
    QCOMPARE(scene.view.amount()->text(), text("125 Bytes of 300 Bytes"));
    QCOMPARE(scene.view.remaining()->text(), text("About 4 minutes"));
    QCOMPARE(scene.view.throughput()->value(), text("42.18 MB/s"));
    QCOMPARE(scene.view.elapsed()->value(), text("10 seconds"));
    QCOMPARE(scene.view.wiped()->value(), text("1"));
    QCOMPARE(scene.view.failed()->value(), text("1"));
    QCOMPARE(scene.view.methodText()->text(), text("3-Pass DoD 5220.22-M (E)"));
}

void ErasingPresenterTest::barAndPercentageSayTheSame()
{
    Scene scene(3);
    scene.write(125);
    // Written since the bar was last set; both wait for its next step.
    scene.run.queueStatsObject()->setBytesWritten(200);
    scene.refresh(1);
    QCOMPARE(scene.view.percent()->text(), text("41 %"));
}

void ErasingPresenterTest::thePassIsThatOfTheFileInWork()
{
    Scene scene(2);
    scene.items[0]->setBytesWritten(50);
    scene.refresh(0);
    QCOMPARE(scene.view.passText()->text(), text("Pass 2 of 3"));
    QCOMPARE(scene.rows.rowInWork(), 0);
    QVERIFY(scene.rows.index(0, QueueTableModel::Name)
                .data(Qt::AccessibleTextRole)
                .toString()
                .endsWith(text("in work, pass 2 of 3")));
}

void ErasingPresenterTest::anEmptyFileHasNoPass()
{
    Scene scene(1);
    scene.items[0]->setFilesize(0);
    scene.refresh(0);
    QCOMPARE(scene.view.passText()->text(), text("Pass --"));
}

void ErasingPresenterTest::aRunWithoutAFileKeepsItsRows()
{
    Scene scene(2);
    scene.presenter.refresh(scene.run, nullptr, 0, start);
    const QueueArray::Item other = Items::at("/of/the/run/before");
    scene.presenter.refresh(scene.run, other.get(), 0, start);
    QCOMPARE(scene.rows.rowInWork(), -1);
    QCOMPARE(scene.view.passText()->text(), text("Pass --"));
}

void ErasingPresenterTest::theRowsThatWereDoneAreDrawnAgain()
{
    Scene scene(10);
    scene.refresh(1);
    const QSignalSpy changes(&scene.rows, &QAbstractItemModel::dataChanged);
    scene.refresh(4);
    QSet<int> rows;
    for (const QList<QVariant> &change : changes)
        rows.insert(change[0].toModelIndex().row());
    QCOMPARE(rows, QSet<int>({1, 2, 3, 4}));
}

void ErasingPresenterTest::theRowInWorkStaysInView()
{
    Scene scene(1000);
    scene.refresh(500);
    const QueueTable::Rows seen =
        scene.view.table()->rowsIn(scene.view.table()->viewport()->rect());
    QCOMPARE(seen.first, 496);
}

void ErasingPresenterTest::progressIsSaidAtEveryTenth()
{
    Scene scene(1);
    for (const double bytes : {0.0, 9.0, 10.0, 19.0, 35.0, 39.0, 100.0}) {
        scene.write(bytes);
        scene.refresh(0);
    }
    QCOMPARE(scene.heard, QStringList({text("10 %"), text("35 %"), text("100 %")}));
}

void ErasingPresenterTest::onlyTheFirstFailureIsSaid()
{
    Scene scene(3);
    scene.refresh(0);
    QVERIFY(scene.heard.isEmpty());
    for (const int failed : {0, 1}) {
        scene.run.addFailure(scene.items[std::size_t(failed)]);
        scene.run.queueStatsObject()->setFilesFailed(failed + 1);
        scene.refresh(2);
    }
    QCOMPARE(scene.heard, QStringList(text("1 file could not be erased.")));
}

void ErasingPresenterTest::theNextRunIsSaidAnew()
{
    Scene scene(1);
    scene.write(50);
    scene.run.addFailure(scene.items[0]);
    scene.run.queueStatsObject()->setFilesFailed(1);
    scene.refresh(0);
    const QStringList first = scene.heard;
    QCOMPARE(first, QStringList({text("50 %"), text("1 file could not be erased.")}));
    scene.presenter.begin(threePasses, QString());
    scene.refresh(0);
    QCOMPARE(scene.heard, first + first);
}

QTEST_MAIN(ErasingPresenterTest)
#include "ErasingPresenterTest.moc"
