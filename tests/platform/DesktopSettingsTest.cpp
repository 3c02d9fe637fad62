#include "platform/DesktopSettings.h"

#include "engine/RecordedLog.h"
#include "kit/PrivateBus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString serviceName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString contrast = QStringLiteral("contrast");
const QString accessibility = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString contrastTheme = QStringLiteral("high-contrast");

} // namespace

/// A portal with the settings that it is given.
class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    bool appear(const QDBusConnection &bus)
    {
        bus_ = bus;
        return bus_.registerObject(path, this, QDBusConnection::ExportAllSlots) &&
               bus_.registerService(serviceName);
    }
    void announce(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                       QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        bus_.send(signal);
    }

    QHash<QString, QVariant> settings;
    bool hangs = false;
    int asked = 0;

  public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key)
    {
        ++asked;
        setDelayedReply(hangs);
        const auto found = settings.constFind(group + QLatin1Char(' ') + key);
        if (found != settings.constEnd())
            return QDBusVariant(QVariant::fromValue(QDBusVariant(*found)));
        if (!hangs)
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                           QStringLiteral("no such setting"));
        return {};
    }

  private:
    QDBusConnection bus_{QString()};
};

class DesktopSettingsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void aSettingIsRead_data();
    void aSettingIsRead();
    void settingsThatThePortalHasNotLeaveNoWish();
    void aChangeIsHeard();
    void whatDoesNotChangeAWishIsNotSignalled();
    void settingsOfOthersAreNotHeard();
    void anAbsentPortalIsSilent();
    void aPortalThatHangsHoldsNothingUp();
    void aMissingBusIsSilent();
    void thereIsOneForTheProcess();

  private:
    [[nodiscard]] QString connection() { return bus_->connection().name(); }

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<FakePortal> portal_;
};

void DesktopSettingsTest::init()
{
    bus_ = std::make_unique<PrivateBus>();
    QVERIFY(bus_->isThere());
    portal_ = std::make_unique<FakePortal>();
}

void DesktopSettingsTest::cleanup()
{
    portal_.reset();
    bus_.reset();
}

void DesktopSettingsTest::aSettingIsRead_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isReduced");
    QTest::addColumn<bool>("isHigh");
    const QString motion = gnome + QLatin1Char(' ') + animations;
    const QString portal = appearance + QLatin1Char(' ') + contrast;
    const QString theme = accessibility + QLatin1Char(' ') + contrastTheme;
    QTest::newRow("no animations") << motion << QVariant(false) << true << false;
    QTest::newRow("animations") << motion << QVariant(true) << false << false;
    QTest::newRow("more contrast") << portal << QVariant(1U) << false << true;
    QTest::newRow("the usual contrast") << portal << QVariant(0U) << false << false;
    QTest::newRow("a theme of high contrast") << theme << QVariant(true) << false << true;
    QTest::newRow("no such theme") << theme << QVariant(false) << false << false;
}

void DesktopSettingsTest::aSettingIsRead()
{
    QFETCH(QString, setting);
    QFETCH(QVariant, value);
    QFETCH(bool, isReduced);
    QFETCH(bool, isHigh);
    portal_->settings = {{setting, value}};
    QVERIFY(portal_->appear(bus_->connection()));
    const DesktopSettings settings(connection());
    const QSignalSpy spy(&settings, &DesktopSettings::changed);
    QVERIFY(!settings.prefersReducedMotion() && !settings.prefersHighContrast());
    QTRY_COMPARE(portal_->asked, 3);
    QTRY_COMPARE(settings.prefersReducedMotion(), isReduced);
    QTRY_COMPARE(settings.prefersHighContrast(), isHigh);
    QCOMPARE(spy.size(), int(isReduced || isHigh));
}

void DesktopSettingsTest::settingsThatThePortalHasNotLeaveNoWish()
{
    QVERIFY(portal_->appear(bus_->connection()));
    const RecordedLog log;
    const DesktopSettings settings(connection());
    QTRY_COMPARE(portal_->asked, 3);
    // What was asked later has been answered later.
    portal_->announce(gnome, animations, false);
    QTRY_VERIFY(settings.prefersReducedMotion());
    QVERIFY(!settings.prefersHighContrast());
    QCOMPARE(log.lines(), QStringList());
}

void DesktopSettingsTest::aChangeIsHeard()
{
    QVERIFY(portal_->appear(bus_->connection()));
    const DesktopSettings settings(connection());
    QTRY_COMPARE(portal_->asked, 3);
    const QSignalSpy spy(&settings, &DesktopSettings::changed);
    portal_->announce(gnome, animations, false);
    QTRY_VERIFY(settings.prefersReducedMotion());
    portal_->announce(gnome, animations, true);
    QTRY_VERIFY(!settings.prefersReducedMotion());
    portal_->announce(appearance, contrast, 1U);
    QTRY_VERIFY(settings.prefersHighContrast());
    QCOMPARE(spy.size(), 3);
}

void DesktopSettingsTest::whatDoesNotChangeAWishIsNotSignalled()
{
    QVERIFY(portal_->appear(bus_->connection()));
    const DesktopSettings settings(connection());
    QTRY_COMPARE(portal_->asked, 3);
    const QSignalSpy spy(&settings, &DesktopSettings::changed);
    portal_->announce(gnome, animations, true);
    portal_->announce(appearance, contrast, 1U);
    portal_->announce(accessibility, contrastTheme, true);
    portal_->announce(gnome, animations, false);
    QTRY_VERIFY(settings.prefersReducedMotion());
    QCOMPARE(spy.size(), 2);
}

void DesktopSettingsTest::settingsOfOthersAreNotHeard()
{
    QVERIFY(portal_->appear(bus_->connection()));
    const DesktopSettings settings(connection());
    QTRY_COMPARE(portal_->asked, 3);
    const QSignalSpy spy(&settings, &DesktopSettings::changed);
    portal_->announce(appearance, animations, false);
    portal_->announce(gnome, contrast, 1U);
    portal_->announce(accessibility, contrastTheme, true);
    QTRY_VERIFY(settings.prefersHighContrast());
    QVERIFY(!settings.prefersReducedMotion());
    QCOMPARE(spy.size(), 1);
}

void DesktopSettingsTest::anAbsentPortalIsSilent()
{
    const RecordedLog log;
    const DesktopSettings settings(connection());
    QTest::qWait(0);
    QVERIFY(portal_->appear(bus_->connection()));
    portal_->announce(gnome, animations, false);
    QTRY_VERIFY(settings.prefersReducedMotion());
    QVERIFY(!settings.prefersHighContrast());
    QCOMPARE(log.lines(), QStringList());
}

void DesktopSettingsTest::aPortalThatHangsHoldsNothingUp()
{
    portal_->hangs = true;
    QVERIFY(portal_->appear(bus_->connection()));
    {
        const DesktopSettings settings(connection());
        // All three are asked while none is answered.
        QTRY_COMPARE(portal_->asked, 3);
        QVERIFY(!settings.prefersReducedMotion());
    }
    portal_->announce(gnome, animations, false);
}

void DesktopSettingsTest::aMissingBusIsSilent()
{
    const RecordedLog log;
    const DesktopSettings settings(QStringLiteral("no such connection"));
    QVERIFY(!settings.prefersReducedMotion() && !settings.prefersHighContrast());
    QCOMPARE(log.lines(), QStringList());
}

void DesktopSettingsTest::thereIsOneForTheProcess()
{
    QVERIFY(qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"));
    QCOMPARE(&DesktopSettings::shared(), &DesktopSettings::shared());
}

QTEST_GUILESS_MAIN(DesktopSettingsTest)
#include "DesktopSettingsTest.moc"
