#include "platform/LocalTime.h"

#include <QTest>

class LocalTimeTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    /// The first answer after the change counts, not the second.
    void aZoneThatChangesCountsAtOnce()
    {
        constexpr std::size_t capacity = 16;
        for (const auto &[zone, hour] : {std::pair("UTC0", 8), std::pair("EST5", 3),
                                         std::pair("NPT-5:45", 13), std::pair("UTC0", 8)}) {
            qputenv("TZ", zone);
            QCOMPARE(LocalTime::text(morning_, "%H", capacity).toInt(), hour);
        }
        for (const auto &[zone, hour] : {std::pair("EST5", 3), std::pair("UTC0", 8)}) {
            qputenv("TZ", zone);
            QCOMPARE(LocalTime::fieldsOf(morning_)->hour, hour);
        }
    }

  private:
    static constexpr std::int64_t morning_ = 1668499951; ///< 08:12:31 UTC
};

QTEST_GUILESS_MAIN(LocalTimeTest)
#include "LocalTimeTest.moc"
