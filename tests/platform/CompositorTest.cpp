#include "platform/Compositor.h"

#include <QProcess>
#include <QTest>

#include <xcb/xcb.h>

/// With an X server of the test's own, which has no compositing manager until the test plays one.
class CompositorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void otherWindowSystemsAlwaysComposite();
    void withoutManagerNothingIsComposited();
    void theOwnerOfTheSelectionIsTheManager();
    void withoutServerNothingIsComposited();

  private:
    QProcess server_;
    QByteArray display_;
};

void CompositorTest::initTestCase()
{
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), QStringLiteral("320x200x24"), QStringLiteral("-noreset")});
    QVERIFY(server_.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(server_.canReadLine(), 20000);
    display_ = ":" + server_.readLine().trimmed();
    QVERIFY(display_.size() > 1);
    QVERIFY(qputenv("DISPLAY", display_));
}

void CompositorTest::cleanupTestCase()
{
    server_.terminate();
    QVERIFY(server_.waitForFinished());
}

void CompositorTest::otherWindowSystemsAlwaysComposite()
{
    QVERIFY(Compositor::isRunning(QStringLiteral("wayland")));
    QVERIFY(Compositor::isRunning(QStringLiteral("offscreen")));
}

void CompositorTest::withoutManagerNothingIsComposited()
{
    QVERIFY(!Compositor::isRunning(QStringLiteral("xcb")));
}

void CompositorTest::theOwnerOfTheSelectionIsTheManager()
{
    xcb_connection_t *manager = xcb_connect(display_.constData(), nullptr);
    QCOMPARE(xcb_connection_has_error(manager), 0);
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(manager)).data;
    const xcb_window_t window = xcb_generate_id(manager);
    xcb_create_window(manager, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const QByteArray name = "_NET_WM_CM_S0";
    xcb_intern_atom_reply_t *atom = xcb_intern_atom_reply(
        manager, xcb_intern_atom(manager, 0, std::uint16_t(name.size()), name.constData()),
        nullptr);
    QVERIFY(atom);
    xcb_set_selection_owner(manager, window, atom->atom, XCB_CURRENT_TIME);
    std::free(atom);
    xcb_flush(manager);
    QTRY_VERIFY(Compositor::isRunning(QStringLiteral("xcb")));
    xcb_disconnect(manager);
    QTRY_VERIFY(!Compositor::isRunning(QStringLiteral("xcb")));
}

void CompositorTest::withoutServerNothingIsComposited()
{
    QVERIFY(qputenv("DISPLAY", ":4095"));
    QVERIFY(!Compositor::isRunning(QStringLiteral("xcb")));
}

QTEST_GUILESS_MAIN(CompositorTest)
#include "CompositorTest.moc"
