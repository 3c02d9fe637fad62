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

QTEST_MAIN(UpdateTextsTest)
#include "UpdateTextsTest.moc"
