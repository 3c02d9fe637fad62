#include "ui/OpenPanel.h"

#include "kit/ForwardingSystemCalls.h"
#include "ui/ButtonBlue.h"
#include "ui/PaintedWidget.h"
#include "ui/PlainButton.h"
#include "ui/ThemedPreferences.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSemaphore>
#include <QTest>
#include <QTreeView>

namespace {

using Paths = std::vector<QByteArray>;

/// Lets a folder be opened only when it is told to.
class SlowFolders : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        gate.acquire();
        return ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
    QSemaphore gate;
};

/// A panel that shows a folder of the test's own, with what it said at its end.
struct Scene
{
    Scene()
    {
        panel = new OpenPanel(&window);
        QObject::connect(panel, &OpenPanel::finished, &window,
                         [this](int code, const Paths &chosen) {
                             response = code;
                             paths = chosen;
                         });
        window.show();
        panel->open();
        panel->setDirectory(scratch.path());
    }
    ~Scene() { delete panel; }

    [[nodiscard]] QStringList rows() const
    {
        QStringList rows;
        const QAbstractItemModel &model = *panel->list()->model();
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append(model.index(row, 0)
                            .data()
                            .toString()
                            .remove(QChar(u'\u2068'))
                            .remove(QChar(u'\u2069')));
        return rows;
    }
    void choose(int row) const
    {
        panel->list()->selectionModel()->select(panel->list()->model()->index(row, 0),
                                                QItemSelectionModel::Select |
                                                    QItemSelectionModel::Rows);
    }
    void key(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers with = {}) const
    {
        widget->setFocus();
        QTest::keyClick(widget, key, with);
    }

    Scratch scratch;
    QWidget window;
    QPointer<OpenPanel> panel;
    std::optional<int> response;
    Paths paths;
};

} // namespace

#define SHOWS(scene, folder)                                                                       \
    QTRY_VERIFY(!(scene).panel->isReading());                                                      \
    QCOMPARE((scene).panel->directory(), folder)

class OpenPanelTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    void itLiesOnItsWindowAloneAndHasItsTexts();
    void filesAndFoldersAreChosenTogether();
    void nothingChosenMeansNoOk();
    void cancelAndEscapeChooseNothing();
    void namesThatAreNoTextKeepTheirBytes();
    void aFolderIsEnteredByDoubleClickAndByReturn();
    void returnOnAFileChoosesIt();
    void aChosenFolderIsTakenByOkNotEntered();
    void upGoesToTheParentWithTheChildChosen();
    void aTypedFolderIsShown();
    void aTypedFileIsChosenInItsFolder();
    void whatCannotBeReadSaysWhy();
    void hiddenNamesShowOnRequest();
    void placesLeadToTheirFolders();
    void typedPathsAreMadeWhole_data();
    void typedPathsAreMadeWhole();
    void aPathTypedOverTheListGoesToTheField();
    void aSlowFolderDoesNotBlockThePanel();
    void noTraceOfTheFoldersIsLeft();
    void itGoesWhenItIsClosed();
    void everyControlHasAName();

  private:
    ThemedPreferences preferences_;
    Scratch home_;
};

void OpenPanelTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
    QVERIFY(!home_.folder("config").isEmpty() && !home_.folder("data").isEmpty());
    QVERIFY(qputenv("HOME", home_.path()));
    QVERIFY(qputenv("XDG_CONFIG_HOME", home_.path("config")));
    QVERIFY(qputenv("XDG_DATA_HOME", home_.path("data")));
}

void OpenPanelTest::itLiesOnItsWindowAloneAndHasItsTexts()
{
    const Scene scene;
    QCOMPARE(scene.panel->windowModality(), Qt::WindowModal);
    QCOMPARE(scene.panel->parentWidget(), &scene.window);
    QCOMPARE(scene.panel->windowTitle(),
             QStringLiteral("Choose files and/or folders to secure delete"));
    QCOMPARE(scene.panel->prompt(), QStringLiteral("OK"));
    scene.panel->setPrompt(QStringLiteral("Take"));
    QCOMPARE(scene.panel->okButton()->text(), QStringLiteral("Take"));
}

void OpenPanelTest::filesAndFoldersAreChosenTogether()
{
    Scene scene;
    QVERIFY(!scene.scratch.file("b", QByteArray()).isEmpty() &&
            !scene.scratch.file("a", QByteArray()).isEmpty() &&
            !scene.scratch.folder("folder").isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows(),
                 (QStringList{QStringLiteral("folder"), QStringLiteral("a"), QStringLiteral("b")}));
    scene.choose(2);
    scene.choose(0);
    QTest::mouseClick(scene.panel->okButton(), Qt::LeftButton);
    QCOMPARE(scene.response, OpenPanel::OkResponse);
    QCOMPARE(scene.paths, (Paths{scene.scratch.path("folder"), scene.scratch.path("b")}));
}

void OpenPanelTest::nothingChosenMeansNoOk()
{
    Scene scene;
    QVERIFY(!scene.scratch.file("a", QByteArray()).isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows().size(), 1);
    QVERIFY(!scene.panel->okButton()->isEnabled());
    scene.key(scene.panel->list(), Qt::Key_Return);
    QVERIFY(!scene.response);
    scene.choose(0);
    QVERIFY(scene.panel->okButton()->isEnabled());
}

void OpenPanelTest::cancelAndEscapeChooseNothing()
{
    for (const bool byKey : {true, false}) {
        Scene scene;
        QVERIFY(!scene.scratch.file("a", QByteArray()).isEmpty());
        scene.panel->setDirectory(scene.scratch.path());
        QTRY_COMPARE(scene.rows().size(), 1);
        scene.choose(0);
        if (byKey)
            scene.key(scene.panel->list(), Qt::Key_Escape);
        else
            QTest::mouseClick(scene.panel->cancelButton(), Qt::LeftButton);
        QCOMPARE(scene.response, OpenPanel::CancelResponse);
        QVERIFY(scene.paths.empty());
    }
}

void OpenPanelTest::namesThatAreNoTextKeepTheirBytes()
{
    Scene scene;
    const QByteArray name = "caf\xe9\nx";
    QVERIFY(!scene.scratch.file(name, QByteArray()).isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows(), QStringList{QStringLiteral("caf\uFFFD\uFFFDx")});
    scene.choose(0);
    QTest::mouseClick(scene.panel->okButton(), Qt::LeftButton);
    QCOMPARE(scene.paths, Paths{scene.scratch.path(name)});
}

void OpenPanelTest::aFolderIsEnteredByDoubleClickAndByReturn()
{
    Scene scene;
    const QByteArray folder = scene.scratch.folder("f\xff");
    QVERIFY(!folder.isEmpty() && !scene.scratch.folder("f\xff/g").isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows().size(), 1);
    const QRect row = scene.panel->list()->visualRect(scene.panel->list()->model()->index(0, 0));
    QTest::mouseClick(scene.panel->list()->viewport(), Qt::LeftButton, {}, row.center());
    QTest::mouseDClick(scene.panel->list()->viewport(), Qt::LeftButton, {}, row.center());
    QTRY_COMPARE(scene.panel->directory(), folder);
    QTRY_COMPARE(scene.rows(), QStringList{QStringLiteral("g")});
    scene.choose(0);
    scene.key(scene.panel->list(), Qt::Key_Return);
    QTRY_COMPARE(scene.panel->directory(), folder + "/g");
    QVERIFY(!scene.response);
}

void OpenPanelTest::returnOnAFileChoosesIt()
{
    Scene scene;
    QVERIFY(!scene.scratch.file("a", QByteArray()).isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows().size(), 1);
    scene.choose(0);
    scene.key(scene.panel->list(), Qt::Key_Return);
    QCOMPARE(scene.response, OpenPanel::OkResponse);
    QCOMPARE(scene.paths, Paths{scene.scratch.path("a")});
}

void OpenPanelTest::aChosenFolderIsTakenByOkNotEntered()
{
    Scene scene;
    const QByteArray folder = scene.scratch.folder("folder");
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows().size(), 1);
    scene.choose(0);
    scene.key(scene.panel->okButton(), Qt::Key_Return);
    QCOMPARE(scene.response, OpenPanel::OkResponse);
    QCOMPARE(scene.paths, Paths{folder});
}

void OpenPanelTest::upGoesToTheParentWithTheChildChosen()
{
    Scene scene;
    QVERIFY(!scene.scratch.folder("a").isEmpty());
    const QByteArray folder = scene.scratch.folder("folder");
    scene.panel->setDirectory(folder);
    SHOWS(scene, folder);
    scene.key(scene.panel->list(), Qt::Key_Up, Qt::AltModifier);
    QTRY_COMPARE(scene.panel->directory(), scene.scratch.path());
    QCOMPARE(scene.panel->paths(), Paths{folder});
    scene.panel->setDirectory("/");
    SHOWS(scene, QByteArray("/"));
    scene.key(scene.panel->list(), Qt::Key_Backspace);
    QVERIFY(!scene.panel->isReading());
}

void OpenPanelTest::aTypedFolderIsShown()
{
    Scene scene;
    const QByteArray folder = scene.scratch.folder("folder");
    scene.panel->setDirectory(scene.scratch.path());
    SHOWS(scene, scene.scratch.path());
    QCOMPARE(scene.panel->pathField()->text(), QFile::decodeName(scene.scratch.path()));
    scene.panel->pathField()->setText(QStringLiteral("folder/"));
    scene.key(scene.panel->pathField(), Qt::Key_Return);
    QTRY_COMPARE(scene.panel->directory(), folder);
    QVERIFY(!scene.response);
}

void OpenPanelTest::aTypedFileIsChosenInItsFolder()
{
    Scene scene;
    const QByteArray file = scene.scratch.file(".secret", QByteArray());
    scene.panel->pathField()->setText(QFile::decodeName(file));
    scene.key(scene.panel->pathField(), Qt::Key_Return);
    QTRY_COMPARE(scene.panel->paths(), Paths{file});
    QVERIFY(!scene.response);
}

void OpenPanelTest::whatCannotBeReadSaysWhy()
{
    Scene scene;
    SHOWS(scene, scene.scratch.path());
    scene.panel->setDirectory(scene.scratch.path("missing"));
    QTRY_VERIFY(!scene.panel->isReading());
    QCOMPARE(scene.panel->directory(), scene.scratch.path());
    QStringList texts;
    for (const QLabel *label : scene.panel->findChildren<QLabel *>())
        texts.append(label->text());
    QVERIFY(texts.contains(QStringLiteral("No such file or directory")));
}

void OpenPanelTest::hiddenNamesShowOnRequest()
{
    Scene scene;
    QVERIFY(!scene.scratch.file(".hidden", QByteArray()).isEmpty() &&
            !scene.scratch.file("shown", QByteArray()).isEmpty());
    scene.panel->setDirectory(scene.scratch.path());
    QTRY_COMPARE(scene.rows(), QStringList{QStringLiteral("shown")});
    scene.panel->hiddenSwitch()->setChecked(true);
    QCOMPARE(scene.rows(), (QStringList{QStringLiteral(".hidden"), QStringLiteral("shown")}));
}

void OpenPanelTest::placesLeadToTheirFolders()
{
    Scene scene;
    QListWidget *places = scene.panel->places();
    QCOMPARE(places->item(0)->text(), QStringLiteral("Home"));
    QCOMPARE(places->item(places->count() - 1)->text(), QStringLiteral("File System"));
    places->setCurrentRow(0);
    scene.key(places, Qt::Key_Return);
    QTRY_COMPARE(scene.panel->directory(), home_.path());
    const QRect last = places->visualItemRect(places->item(places->count() - 1));
    QTest::mouseClick(places->viewport(), Qt::LeftButton, {}, last.center());
    QTRY_COMPARE(scene.panel->directory(), QByteArray("/"));
}

void OpenPanelTest::typedPathsAreMadeWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("whole") << QStringLiteral("/tmp/x") << QByteArray("/tmp/x");
    QTest::newRow("relative") << QStringLiteral("x/y") << QByteArray("/shown/x/y");
    QTest::newRow("home") << QStringLiteral("~") << QByteArray("/home/me");
    QTest::newRow("below home") << QStringLiteral("~/x") << QByteArray("/home/me/x");
    QTest::newRow("a name with a tilde") << QStringLiteral("~x") << QByteArray("/shown/~x");
    QTest::newRow("slashes") << QStringLiteral("//tmp//x/") << QByteArray("/tmp/x");
}

void OpenPanelTest::typedPathsAreMadeWhole()
{
    QFETCH(QString, text);
    QTEST(OpenPanel::typedPath(text, "/shown", "/home/me"), "path");
}

void OpenPanelTest::aPathTypedOverTheListGoesToTheField()
{
    Scene scene;
    OpenPanel &panel = *scene.panel;
    QTRY_VERIFY(!panel.isReading());
    QVERIFY(panel.focusWidget() == panel.list());
    const QString path = QFile::decodeName(scene.scratch.path());
    QTest::keyClicks(panel.list(), path.left(1));
    QVERIFY(panel.focusWidget() == panel.pathField());
    QTest::keyClicks(panel.pathField(), path.mid(1));
    QCOMPARE(panel.pathField()->text(), path);
    QTest::keyClick(panel.pathField(), Qt::Key_Return);
    QTRY_VERIFY(panel.focusWidget() == panel.list());
    QCOMPARE(panel.directory(), scene.scratch.path());
}

void OpenPanelTest::aSlowFolderDoesNotBlockThePanel()
{
    SlowFolders slow;
    const SystemCalls::Replacement replacement(slow);
    {
        Scene scene;
        QCoreApplication::processEvents();
        QVERIFY(scene.panel->isReading());
        QTest::mouseClick(scene.panel->cancelButton(), Qt::LeftButton);
        QCOMPARE(scene.response, OpenPanel::CancelResponse);
    }
    // Two readings wait: of the home folder and of the test's own.
    slow.gate.release(2);
    QTRY_COMPARE(slow.gate.available(), 0);
}

void OpenPanelTest::noTraceOfTheFoldersIsLeft()
{
    {
        Scene scene;
        const QByteArray folder = scene.scratch.folder("visited");
        scene.panel->setDirectory(folder);
        SHOWS(scene, folder);
        scene.panel->accept();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(QDir(QFile::decodeName(home_.path("config"))).isEmpty());
    QVERIFY(QDir(QFile::decodeName(home_.path("data"))).isEmpty());
}

void OpenPanelTest::itGoesWhenItIsClosed()
{
    const Scene scene;
    scene.panel->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(scene.panel.isNull());
}

void OpenPanelTest::everyControlHasAName()
{
    const Scene scene;
    for (const QWidget *child : scene.panel->findChildren<QWidget *>()) {
        if (child->focusPolicy() == Qt::NoFocus ||
            child->objectName().startsWith(QLatin1String("qt_")))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(child);
        QVERIFY2(!child->accessibleName().isEmpty() || (button && !button->text().isEmpty()),
                 child->metaObject()->className());
    }
}

QTEST_MAIN(OpenPanelTest)
#include "OpenPanelTest.moc"
