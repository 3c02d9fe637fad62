#include "platform/SystemLog.h"

#include <QTest>

namespace {

struct Line
{
    QtMsgType type;
    QString category;
    QString text;
};
QList<Line> lines;

void keep(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    lines.append({type, QString::fromLatin1(context.category), text});
}

} // namespace

class SystemLogTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { qInstallMessageHandler(previous_); }

    void oneLineIsTheOperationAndWhatHappened();
    void percentSignsAndLettersOfAllKindsStay();
    void theCategoryCanBeSwitchedOff();

  private:
    QtMessageHandler previous_ = nullptr;
};

void SystemLogTest::init()
{
    lines.clear();
    previous_ = qInstallMessageHandler(keep);
}

void SystemLogTest::oneLineIsTheOperationAndWhatHappened()
{
    SystemLog::write("-[FileUtils deleteFile:]", QStringLiteral("/a: No such file or directory"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().text,
             QStringLiteral("-[FileUtils deleteFile:] /a: No such file or directory"));
    QCOMPARE(lines.first().category, QStringLiteral("vantorel"));
    QCOMPARE(lines.first().type, QtWarningMsg);
}

void SystemLogTest::percentSignsAndLettersOfAllKindsStay()
{
    SystemLog::write("op", QStringLiteral(u"file:///100%25/%s \u00e4\u6f22"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().text, QStringLiteral(u"op file:///100%25/%s \u00e4\u6f22"));
}

void SystemLogTest::theCategoryCanBeSwitchedOff()
{
    QLoggingCategory::setFilterRules(QStringLiteral("vantorel=false"));
    SystemLog::write("op", QStringLiteral("what"));
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(lines.isEmpty());
    SystemLog::write("op", QStringLiteral("what"));
    QCOMPARE(lines.size(), 1);
}

QTEST_APPLESS_MAIN(SystemLogTest)
#include "SystemLogTest.moc"
