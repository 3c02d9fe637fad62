#include "support/view/ErrorLogModel.h"

#include "ui/TableRole.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

class ErrorLogModelTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFailedFileBecomesARow();
    void aNameThatIsNoTextIsShownAndKept();
    void aRowIsSpokenInOneLine();
    void theHeadNamesTheColumns();
    void rowsComeAtTheEnd();
    void allRowsGoAtOnce();
};

void ErrorLogModelTest::aFailedFileBecomesARow()
{
    ErrorLogModel model("/home/ada", nullptr);
    model.add({"notes.txt", "/home/ada/Documents", QStringLiteral("Operation not permitted")});
    QCOMPARE(model.count(), 1);
    QCOMPARE(model.index(0, ErrorLogModel::File).data().toString(), QStringLiteral("notes.txt"));
    QCOMPARE(model.index(0, ErrorLogModel::Folder).data().toString(),
             QStringLiteral("~/Documents"));
    QCOMPARE(model.index(0, ErrorLogModel::Error).data().toString(),
             QStringLiteral("Operation not permitted"));
    QCOMPARE(model.index(0, 0).data(TableRole::FileName).toString(), QStringLiteral("notes.txt"));
    QVERIFY(!model.index(0, 0).data(TableRole::Status).isValid());
}

void ErrorLogModelTest::aNameThatIsNoTextIsShownAndKept()
{
    ErrorLogModel model("/home/ada", nullptr);
    model.add({"a\xFF\nb", "/tmp/\x01", QString()});
    QCOMPARE(model.index(0, ErrorLogModel::File).data().toString(),
             QStringLiteral(u"a\uFFFD\uFFFDb"));
    QCOMPARE(model.index(0, ErrorLogModel::Folder).data().toString(),
             QStringLiteral(u"/tmp/\uFFFD"));
    QCOMPARE(model.row(0).filename, QByteArray("a\xFF\nb"));
}

void ErrorLogModelTest::aRowIsSpokenInOneLine()
{
    ErrorLogModel model("/home/ada", nullptr);
    model.add({"notes.txt", "/home/ada", QStringLiteral("Permission denied")});
    const auto spoken = [&model](int column) {
        return model.index(0, column).data(Qt::AccessibleTextRole).toString();
    };
    QCOMPARE(spoken(ErrorLogModel::File),
             QStringLiteral(u"\u2068notes.txt\u2069, \u2068~\u2069, Permission denied"));
    QCOMPARE(spoken(ErrorLogModel::Error), QStringLiteral("Permission denied"));
}

void ErrorLogModelTest::theHeadNamesTheColumns()
{
    const ErrorLogModel model;
    const auto title = [&model](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    };
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(title(ErrorLogModel::File), QStringLiteral("File"));
    QCOMPARE(title(ErrorLogModel::Folder), QStringLiteral("Folder"));
    QCOMPARE(title(ErrorLogModel::Error), QStringLiteral("Error"));
}

void ErrorLogModelTest::rowsComeAtTheEnd()
{
    ErrorLogModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.add({"one", "/", {}});
    model.add({"two", "/", {}});
    QCOMPARE(inserted.size(), 2);
    QCOMPARE(inserted.at(1).at(1).toInt(), 1);
    QCOMPARE(model.row(1).filename, QByteArray("two"));
}

void ErrorLogModelTest::allRowsGoAtOnce()
{
    ErrorLogModel model;
    model.add({"one", "/", {}});
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.removeAll();
    QCOMPARE(reset.size(), 1);
    QCOMPARE(model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(ErrorLogModelTest)
#include "ErrorLogModelTest.moc"
