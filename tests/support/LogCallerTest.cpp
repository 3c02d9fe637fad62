#include "support/LogCaller.h"

#include <QTest>

#include <source_location>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QString callerHere(const std::source_location &where = std::source_location::current())
{
    return LogCaller::ofFrame(LogCaller::frameText(where.function_name(), where.line()));
}

QString hiddenFunction()
{
    return callerHere();
}

struct HiddenClass
{
    HiddenClass() : made(callerHere()) {}
    template <typename Value> [[nodiscard]] QString takes(const Value & /*value*/) const
    {
        return callerHere();
    }
    static QString shared() { return callerHere(); }
    QString made;
};

template <typename Value> struct HiddenTemplate
{
    static QString says() { return callerHere(); }
};

} // namespace

class LogCallerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFrameHasItsSixPieces()
    {
        QCOMPARE(LogCaller::frameText("void RunLog::fileFailed(const FailedFile&)", 42),
                 text("1   vantorel   0x0 -[RunLog fileFailed] + 42"));
        QCOMPARE(LogCaller::frameText("int main(int, char**)", 7),
                 text("1   vantorel   0x0 main + 7"));
    }

    void theFourthAndFifthPieceAreTheCaller_data()
    {
        QTest::addColumn<QString>("frame");
        QTest::addColumn<QString>("caller");
        const auto row = [](const char *frame, const char *caller) {
            QTest::newRow(*frame == 0 ? "empty" : frame)
                << text(frame) << (caller == nullptr ? QString() : text(caller));
        };
        row("1   vantorel   0x00000001 -[MainVC finishedWiping] + 123", "[MainVC finishedWiping]");
        row("1   vantorel   0x00000001 +[FileUtils isFile:] + 12", "[FileUtils isFile:]");
        row("1 vantorel 0x1 -[Logger level:text:] + 1", "[Logger level:text:]");
        row("1   vantorel   0x00000001 main + 123", "[main 123]");
        // a name with a separator in it shifts the pieces
        row("1   Vantorel Beta   0x00000001 -[MainVC finishedWiping] + 1", "[0x00000001 MainVC]");
        row("1   van.torel   0x00000001 -[MainVC finishedWiping] + 1", "[0x00000001 MainVC]");
        row("1   van-to,rel?   0x1 -[A b] + 1", "[rel 0x1]");
        row("a b c d e", "[d e]");
        // fewer than five
        row("a b c d", nullptr);
        row("1   vantorel   0x0  + 42", nullptr);
        row("", nullptr);
        row(" -[]+?.,", nullptr);
    }
    void theFourthAndFifthPieceAreTheCaller()
    {
        QFETCH(QString, frame);
        QFETCH(QString, caller);
        QCOMPARE(LogCaller::ofFrame(frame), caller);
        QCOMPARE(LogCaller::ofFrame(frame).isNull(), caller.isNull());
    }

    void functionsAreNamedByClassAndOperation_data()
    {
        QTest::addColumn<QByteArray>("function");
        QTest::addColumn<QString>("caller");
        const auto row = [](const char *function, const char *caller) {
            QTest::newRow(function) << QByteArray(function) << text(caller);
        };
        row("void MainVC::finishedWiping()", "[MainVC finishedWiping]");
        row("virtual QString& ns::Inner::Class::operation(int) const", "[Class operation]");
        row("static std::function<void(int)> A::b(std::function<void()>)", "[A b]");
        row("A::b(int)::<lambda(char)>", "[A b]");
        row("MainVC::MainVC(int)", "[MainVC MainVC]");
        row("virtual MainVC::~MainVC()", "[MainVC ~MainVC]");
        row("static T List<T>::first(Other<A, B>) [with T = std::pair<int, int>]", "[List first]");
        row("char *A::b(int)", "[A b]");
        row("{anonymous}::Inner::run()", "[Inner run]");
        row("void (anonymous namespace)::Inner::run()", "[Inner run]");
        row("int main(int, char**)", "[main 5]");
        row("void {anonymous}::helper()", "[helper 5]");
    }
    void functionsAreNamedByClassAndOperation()
    {
        QFETCH(QByteArray, function);
        QFETCH(QString, caller);
        QCOMPARE(LogCaller::ofFrame(LogCaller::frameText(function.constData(), 5)), caller);
    }

    void theCompilersOwnWordsAreUnderstood()
    {
        QCOMPARE(callerHere(), text("[LogCallerTest theCompilersOwnWordsAreUnderstood]"));
        QCOMPARE([] { return callerHere(); }(),
                 text("[LogCallerTest theCompilersOwnWordsAreUnderstood]"));
        QCOMPARE(HiddenClass().made, text("[HiddenClass HiddenClass]"));
        QCOMPARE(HiddenClass().takes(std::vector<int>()), text("[HiddenClass takes]"));
        QCOMPARE(HiddenClass::shared(), text("[HiddenClass shared]"));
        QCOMPARE(HiddenTemplate<std::vector<int>>::says(), text("[HiddenTemplate says]"));
        QVERIFY(hiddenFunction().startsWith(QLatin1String("[hiddenFunction ")));
    }

    void anUnknownFunctionMakesNoCaller()
    {
        QVERIFY(LogCaller::ofFrame(LogCaller::frameText("", 12)).isNull());
        QVERIFY(LogCaller::ofFrame(LogCaller::frameText("(", 12)).isNull());
    }
};

QTEST_GUILESS_MAIN(LogCallerTest)
#include "LogCallerTest.moc"
