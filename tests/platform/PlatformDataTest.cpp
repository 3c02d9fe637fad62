#include "platform/PlatformData.h"

#include <QTest>

class PlatformDataTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void aStartBringsItsTokenAndItsId();
    void aStartByHandBringsNeither();
    void aMapCarriesOnlyWhatThereIs();
    void whatElseAMapHoldsIsLeftOut();
};

void PlatformDataTest::init()
{
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
}

void PlatformDataTest::aStartBringsItsTokenAndItsId()
{
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    qputenv("DESKTOP_STARTUP_ID", "id_TIME7");
    const PlatformData expected{QStringLiteral("token"), QStringLiteral("id_TIME7")};
    QVERIFY(PlatformData::fromEnvironment() == expected);
}

void PlatformDataTest::aStartByHandBringsNeither()
{
    QVERIFY(PlatformData::fromEnvironment() == PlatformData());
    QVERIFY(PlatformData::fromEnvironment().toMap().isEmpty());
}

void PlatformDataTest::aMapCarriesOnlyWhatThereIs()
{
    const PlatformData whole{QStringLiteral("token"), QStringLiteral("id")};
    const PlatformData half{QString(), QStringLiteral("id")};
    const QVariantMap wholeMap{{QStringLiteral("activation-token"), QStringLiteral("token")},
                               {QStringLiteral("desktop-startup-id"), QStringLiteral("id")}};
    QCOMPARE(whole.toMap(), wholeMap);
    QCOMPARE(half.toMap().keys(), QStringList(QStringLiteral("desktop-startup-id")));
    QVERIFY(PlatformData::fromMap(whole.toMap()) == whole);
    QVERIFY(PlatformData::fromMap(half.toMap()) == half);
}

void PlatformDataTest::whatElseAMapHoldsIsLeftOut()
{
    const QVariantMap map{{QStringLiteral("workspace"), 3},
                          {QStringLiteral("activation-token"), QStringList()}};
    QVERIFY(PlatformData::fromMap(map) == PlatformData());
}

QTEST_GUILESS_MAIN(PlatformDataTest)
#include "PlatformDataTest.moc"
