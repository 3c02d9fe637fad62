#include "ui/ImageView.h"

#include "ui/DropDrawing.h"
#include "ui/DropReceiver.h"
#include "ui/FileDrop.h"
#include "ui/ThemedPreferences.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {

using Paths = std::vector<QByteArray>;

/// What another program drags: the bytes of its list as they are.
class Dragged : public QMimeData
{
  public:
    explicit Dragged(QByteArray list) : list_(std::move(list)) {}

    [[nodiscard]] QStringList formats() const override { return {type()}; }
    [[nodiscard]] bool hasFormat(const QString &asked) const override { return asked == type(); }

  protected:
    [[nodiscard]] QVariant retrieveData(const QString &, QMetaType) const override { return list_; }

  private:
    static QString type() { return QStringLiteral("text/uri-list"); }

    QByteArray list_;
};

class RecordingReceiver : public DropReceiver
{
  public:
    explicit RecordingReceiver(bool answersIt = true) : answers_(answersIt) {}

    [[nodiscard]] bool answers(Call) const override { return answers_; }
    void openFiles(const Paths &paths) override
    {
        ++calls;
        opened = paths;
    }

    int calls = 0;
    Paths opened;

  private:
    bool answers_;
};

/// The receiver that drops go to while it lives.
struct Receiving
{
    explicit Receiving(bool answersIt = true)
        : receiver(std::make_shared<RecordingReceiver>(answersIt))
    {
        DropReceiver::setShared(receiver);
    }
    std::shared_ptr<RecordingReceiver> receiver;
};

constexpr Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

QDragEnterEvent entering(const QMimeData &dragged, Qt::DropActions actions = offered)
{
    return {QPoint(10, 10), actions, &dragged, Qt::LeftButton, Qt::NoModifier};
}

struct Outcome
{
    bool isAccepted;
    Qt::DropAction action;
};

/// Drags it in and lets go of it.
Outcome dropped(ImageView &view, const QMimeData &dragged)
{
    QDragEnterEvent enter = entering(dragged);
    QApplication::sendEvent(&view, &enter);
    QDropEvent drop(QPointF(10, 10), offered, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &drop);
    return {drop.isAccepted(), drop.dropAction()};
}

} // namespace

class ImageViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aDragOfFilesIsTakenAsACopy();
    void aDragThatCannotBeACopyIsNotTaken();
    void otherThingsAreNotTaken_data();
    void otherThingsAreNotTaken();
    void theCopyIsAnsweredUnconditionally();
    void droppedFilesAreHandedOnAsBytes();
    void anEmptyListIsHandedToNobodyAndStillTaken();
    void aReceiverThatDoesNotAnswerIsNotCalled();
    void withoutAReceiverTheDropIsStillTaken();
    void aReceiverThatHasGoneIsNotCalled();
    void theDragsStateIsTold();
    void itsSizeIsTheDrawings();
    void itShowsTheDrawingInItsWholeArea();
    void underADragTheDrawingComesApart();
    void theDrawingFollowsTheTheme();

  private:
    ThemedPreferences preferences_;
};

void ImageViewTest::aDragOfFilesIsTakenAsACopy()
{
    ImageView view;
    const Dragged files("file:///a\r\nfile:///b\r\n");

    QDragEnterEvent enter = entering(files);
    QApplication::sendEvent(&view, &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);

    QDragMoveEvent move(QPoint(20, 20), offered, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &move);
    QVERIFY(move.isAccepted());
    QCOMPARE(move.dropAction(), Qt::CopyAction);
}

void ImageViewTest::aDragThatCannotBeACopyIsNotTaken()
{
    ImageView view;
    const QSignalSpy states(&view, &ImageView::dragStateChanged);
    const Dragged files("file:///a\r\n");

    QDragEnterEvent enter = entering(files, Qt::MoveAction);
    QApplication::sendEvent(&view, &enter);

    QVERIFY(!enter.isAccepted());
    QCOMPARE(states.count(), 0);
}

void ImageViewTest::otherThingsAreNotTaken_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("text") << QByteArray("text/plain") << QByteArray("file:///a");
    QTest::newRow("a picture") << QByteArray("image/png") << QByteArray("PNG");
    QTest::newRow("a page's address")
        << QByteArray("text/uri-list") << QByteArray("https://example.org/\r\n");
    QTest::newRow("an empty list") << QByteArray("text/uri-list") << QByteArray();
}

void ImageViewTest::otherThingsAreNotTaken()
{
    QFETCH(const QByteArray, type);
    QFETCH(const QByteArray, data);
    ImageView view;
    const QSignalSpy states(&view, &ImageView::dragStateChanged);
    QMimeData dragged;
    dragged.setData(QString::fromLatin1(type), data);

    QDragEnterEvent enter = entering(dragged);
    QApplication::sendEvent(&view, &enter);

    QVERIFY(!enter.isAccepted());
    QCOMPARE(states.count(), 0);
}

void ImageViewTest::theCopyIsAnsweredUnconditionally()
{
    const ImageView view;
    const QMimeData nothing;

    QCOMPARE(view.draggingEntered(&nothing), Qt::CopyAction);
    QCOMPARE(view.draggingUpdated(&nothing), Qt::CopyAction);
}

void ImageViewTest::droppedFilesAreHandedOnAsBytes()
{
    ImageView view;
    const Receiving scene;
    const Dragged files("file:///a%20b\r\nfile:///not%FFutf8\r\nfile://far/c\r\n");

    const Outcome drop = dropped(view, files);

    QVERIFY(drop.isAccepted);
    QCOMPARE(drop.action, Qt::CopyAction);
    QCOMPARE(scene.receiver->calls, 1);
    QCOMPARE(scene.receiver->opened, (Paths{"/a b", "/not\xff"
                                                    "utf8"}));
}

void ImageViewTest::anEmptyListIsHandedToNobodyAndStillTaken()
{
    ImageView view;
    const Receiving scene;

    QVERIFY(view.performDragOperation(nullptr));
    const QMimeData nothing;
    QVERIFY(view.performDragOperation(&nothing));
    const Dragged refused("file://far/a\r\n");
    QVERIFY(view.performDragOperation(&refused));

    QCOMPARE(scene.receiver->calls, 0);
}

void ImageViewTest::aReceiverThatDoesNotAnswerIsNotCalled()
{
    ImageView view;
    const Receiving scene(false);
    const Dragged files("file:///a\r\n");

    QVERIFY(view.performDragOperation(&files));

    QCOMPARE(scene.receiver->calls, 0);
}

void ImageViewTest::withoutAReceiverTheDropIsStillTaken()
{
    DropReceiver::setShared({});
    const Dragged files("file:///a\r\n");

    QVERIFY(FileDrop::perform(&files));
}

void ImageViewTest::aReceiverThatHasGoneIsNotCalled()
{
    {
        const Receiving scene;
    }
    const Dragged files("file:///a\r\n");

    QVERIFY(DropReceiver::shared().expired());
    QVERIFY(FileDrop::perform(&files));
}

void ImageViewTest::theDragsStateIsTold()
{
    ImageView view;
    QSignalSpy states(&view, &ImageView::dragStateChanged);
    const Dragged files("file:///a\r\nfile:///b\r\nfile://far/c\r\n");

    QDragEnterEvent enter = entering(files);
    QApplication::sendEvent(&view, &enter);
    QCOMPARE(states.takeFirst().at(0).toInt(), 2);

    QDragLeaveEvent leave;
    QApplication::sendEvent(&view, &leave);
    QCOMPARE(states.takeFirst().at(0).toInt(), -1);

    dropped(view, files);
    QCOMPARE(states.takeFirst().at(0).toInt(), 2);
    QCOMPARE(states.takeFirst().at(0).toInt(), -1);
    QVERIFY(states.isEmpty());
}

void ImageViewTest::itsSizeIsTheDrawings()
{
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
    const ImageView view;
    QCOMPARE(view.sizeHint(), QSize(240, 176));

    font.setPixelSize(26);
    QApplication::setFont(font);
    QCOMPARE(view.sizeHint(), QSize(384, 282)); // 1.6 times as large, not more

    font.setPixelSize(13);
    QApplication::setFont(font);
}

void ImageViewTest::itShowsTheDrawingInItsWholeArea()
{
    for (const int scale : {1, 2}) {
        ImageView view;
        view.resize(240 * scale, 176 * scale);
        const QImage image = view.grab().toImage();

        const QColor blue(92, 156, 223);
        QCOMPARE(image.pixelColor(78 * scale, 73 * scale), blue);                // the first square
        QCOMPARE(image.pixelColor(120 * scale, 83 * scale), blue);               // the line
        QCOMPARE(image.pixelColor(150 * scale, 130 * scale), QColor(Qt::white)); // the page
        QCOMPARE(image.pixelColor(202 * scale, 111 * scale), QColor(Qt::white)); // the sun
        QVERIFY(image.pixelColor(30 * scale, 140 * scale).blue() > 0xD0);        // the folder
    }
}

void ImageViewTest::underADragTheDrawingComesApart()
{
    QImage image(240, 176, QImage::Format_ARGB32_Premultiplied);
    const auto painted = [&image](double spread) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        DropDrawing::paint(painter, QRectF(0, 0, 240, 176), spread);
        return image;
    };
    const auto topmostOf = [](const QImage &drawing, int column) {
        int y = 0;
        while (drawing.pixelColor(column, y).alpha() < 40)
            ++y;
        return y;
    };
    const auto leftmostOf = [](const QImage &drawing, int row) {
        int x = 0;
        while (drawing.pixelColor(x, row).alpha() < 128)
            ++x;
        return x;
    };
    const QImage rest = painted(0);
    const QImage apart = painted(1);

    QCOMPARE(topmostOf(rest, 78), 22);  // fifth row, the first column's topmost
    QCOMPARE(topmostOf(apart, 78), 16); // 4 × 1.6 higher
    QCOMPARE(leftmostOf(rest, 140) - leftmostOf(apart, 140), 4);
    QCOMPARE(apart.pixelColor(78, 73), rest.pixelColor(78, 73));   // the lowest row stays
    QCOMPARE(apart.pixelColor(206, 111), QColor(Qt::white));       // the sun, 4 to the right
    QCOMPARE(apart.pixelColor(72, 120), rest.pixelColor(72, 120)); // so does the page
}

void ImageViewTest::theDrawingFollowsTheTheme()
{
    ImageView view;
    view.resize(240, 176);
    const QColor light = view.grab().toImage().pixelColor(150, 130);
    preferences_.setDark(true);
    const QColor dark = view.grab().toImage().pixelColor(150, 130);
    preferences_.setDark(false);

    QCOMPARE(light, QColor(Qt::white));
    QCOMPARE(dark, QColor(0xE3, 0xE9, 0xEE));
}

QTEST_MAIN(ImageViewTest)
#include "ImageViewTest.moc"
