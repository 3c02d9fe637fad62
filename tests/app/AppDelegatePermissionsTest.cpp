#include "app/AppDelegate.h"

#include "kit/Scratch.h"
#include "kit/Unprivileged.h"
#include "ui/DialogBox.h"

#include <QTest>

/// What becomes of a start where the support folder cannot be made.
class AppDelegatePermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void aFolderThatCannotBeMadeIsToldWithItsPath();

  private:
    Scratch scratch_;
    QByteArray data_;
};

void AppDelegatePermissionsTest::init()
{
    if (data_.isEmpty())
        data_ = scratch_.folder("data");
    QVERIFY(!data_.isEmpty() && ::chmod(data_.constData(), 0555) == 0);
    qputenv("XDG_DATA_HOME", data_);
}

void AppDelegatePermissionsTest::aFolderThatCannotBeMadeIsToldWithItsPath()
{
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    QVERIFY(!AppDelegate::initialize());
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QVERIFY(
        answers.asked()[0].info.contains(QFile::decodeName(data_) + QStringLiteral("/Vantorel")));
}

UNPRIVILEGED_TEST_MAIN(AppDelegatePermissionsTest)
#include "AppDelegatePermissionsTest.moc"
