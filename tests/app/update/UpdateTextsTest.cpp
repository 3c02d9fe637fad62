#include "app/update/UpdateTexts.h"

#include <QSet>
#include <QTest>

class UpdateTextsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyOutcomeHasOneSentenceOfItsOwn();
    void detailsStandInTheirSentences();
    void notesLoseWhatCouldDeceive();
    void linesOfNotesEndInOneWay();
    void daysAreReadFromDatesOfFeeds_data();
    void daysAreReadFromDatesOfFeeds();
};

void UpdateTextsTest::everyOutcomeHasOneSentenceOfItsOwn()
{
    QSet<QString> seen;
    for (int outcome = 0; outcome <= int(UpdateOutcome::NotWritten); ++outcome) {
        const QString text = UpdateTexts::sentence(UpdateOutcome(outcome), QStringLiteral("x"));
        QVERIFY(text.endsWith(QLatin1Char('.')));
        QVERIFY(!text.contains(QLatin1Char('%')));
        seen.insert(text);
    }
    QCOMPARE(seen.size(), int(UpdateOutcome::NotWritten) + 1);
}

void UpdateTextsTest::detailsStandInTheirSentences()
{
    QCOMPARE(UpdateTexts::sentence(UpdateOutcome::NoNewerVersion, QStringLiteral("0.1.0")),
             QStringLiteral("No newer version than Vantorel 0.1.0 is offered."));
    QCOMPARE(
        UpdateTexts::sentence(UpdateOutcome::NotWritten, QStringLiteral("Disk quota exceeded")),
        QStringLiteral("The download could not be written: Disk quota exceeded."));
}

void UpdateTextsTest::notesLoseWhatCouldDeceive()
{
    QCOMPARE(UpdateTexts::plainNotes(QStringLiteral("a\nb\tc")), QStringLiteral("a\nb c"));
    QCOMPARE(UpdateTexts::plainNotes(QStringLiteral("a\r\n\u001B[1mb\u0085\u007F")),
             QStringLiteral("a\n[1mb"));
    QCOMPARE(UpdateTexts::plainNotes(QStringLiteral("\u202Eexe\u202C \u2066x\u2069\u200F")),
             QStringLiteral("exe x"));
    const QString kept = QStringLiteral("\u00E9 \u4E2D <b>&amp; \U0001F512 \u0645");
    QCOMPARE(UpdateTexts::plainNotes(kept), kept);
}

void UpdateTextsTest::linesOfNotesEndInOneWay()
{
    QCOMPARE(UpdateTexts::plainNotes(QStringLiteral("a\u2028b\u2029c\r\nd")),
             QStringLiteral("a\nb\nc\nd"));
}

void UpdateTextsTest::daysAreReadFromDatesOfFeeds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("day");
    const QDate day(2022, 11, 5);
    const auto row = [](const char *text, QDate expected) {
        QTest::newRow(*text ? text : "nothing") << QString::fromLatin1(text) << expected;
    };
    row("Sat, 05 Nov 2022 06:59:11 +0000", day);
    row("Sat, 05 Nov 2022 06:59:11 GMT", day);
    row("Sat, 05 Nov 2022 06:59:11 EST", day);
    row("Sat, 05 Nov 2022 06:59:11 Z", day);
    row("Sat, 05 Nov 22 06:59:11 GMT", day);
    row("Sat, 05 Nov 2022 23:59:11 -0800", day);
    row("Sat,5 Nov  2022 06:59 UT", day);
    row("5 Nov 2022 06:59:11 GMT", day);
    row("29 Feb 2024 00:00:00 GMT", QDate(2024, 2, 29));
    row("29 Feb 2022 00:00:00 GMT", QDate());
    row("0 Nov 2022 06:59:11 GMT", QDate());
    row("5 Smarch 2022 06:59:11 GMT", QDate());
    row("5 Nov 222 06:59:11 GMT", QDate());
    row("5 Nov 20222 06:59:11 GMT", QDate());
    row("5 Nov -5 06:59:11 GMT", QDate());
    row("2022-11-05T06:59:11Z", QDate());
    row("Sat,", QDate());
    row("soon", QDate());
    row("", QDate());
}

void UpdateTextsTest::daysAreReadFromDatesOfFeeds()
{
    QFETCH(QString, text);
    QTEST(UpdateTexts::dayOf(text), "day");
}

QTEST_MAIN(UpdateTextsTest)
#include "UpdateTextsTest.moc"
