#include "platform/OptionalDelegate.h"

#include <QList>
#include <QString>
#include <QTest>

#include <memory>
#include <set>

namespace {

class Protocol
{
  public:
    enum class Call { began, ended, took };

    virtual ~Protocol() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;
    virtual void began() {}
    virtual void ended(int /*result*/, const QString & /*text*/) {}
    virtual void took(std::unique_ptr<int> /*thing*/) {}
};

/// Answers the calls that it is told to and notes those that it gets.
class RecordingDelegate final : public Protocol
{
  public:
    [[nodiscard]] bool answers(Call call) const override { return answered.contains(call); }
    void began() override { told.append(QStringLiteral("began")); }
    void ended(int result, const QString &text) override
    {
        told.append(QStringLiteral("ended %1 %2").arg(result).arg(text));
    }
    void took(std::unique_ptr<int> thing) override
    {
        told.append(QStringLiteral("took %1").arg(*thing));
    }

    std::set<Call> answered;
    QList<QString> told;
};

} // namespace

class OptionalDelegateTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aCallThatIsAnsweredIsMade();
    void aCallThatIsNotAnsweredIsNotMade();
    void eachCallIsAskedForOnItsOwn();
    void noDelegateAnswersNothing();
    void aDelegateThatIsGoneAnswersNothing();
    void argumentsArriveWhole();
    void aDelegateLivesUntilItsCallEnds();
    void theDelegateIsHeldWeakly();
};

void OptionalDelegateTest::aCallThatIsAnsweredIsMade()
{
    const auto delegate = std::make_shared<RecordingDelegate>();
    delegate->answered = {Protocol::Call::began};
    const std::weak_ptr<Protocol> weak = delegate;
    QVERIFY(OptionalDelegate::answers(weak, Protocol::Call::began));
    QVERIFY(OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
    QCOMPARE(delegate->told, QList<QString>({QStringLiteral("began")}));
}

void OptionalDelegateTest::aCallThatIsNotAnsweredIsNotMade()
{
    const auto delegate = std::make_shared<RecordingDelegate>();
    const std::weak_ptr<Protocol> weak = delegate;
    QVERIFY(!OptionalDelegate::answers(weak, Protocol::Call::began));
    QVERIFY(!OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
    QVERIFY(delegate->told.isEmpty());
}

void OptionalDelegateTest::eachCallIsAskedForOnItsOwn()
{
    const auto delegate = std::make_shared<RecordingDelegate>();
    delegate->answered = {Protocol::Call::ended};
    const std::weak_ptr<Protocol> weak = delegate;
    QVERIFY(!OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
    QVERIFY(OptionalDelegate::call(weak, Protocol::Call::ended, &Protocol::ended, 1, QString()));
    QCOMPARE(delegate->told.size(), 1);
}

void OptionalDelegateTest::noDelegateAnswersNothing()
{
    const std::weak_ptr<Protocol> none;
    QVERIFY(!OptionalDelegate::answers(none, Protocol::Call::began));
    QVERIFY(!OptionalDelegate::call(none, Protocol::Call::began, &Protocol::began));
}

void OptionalDelegateTest::aDelegateThatIsGoneAnswersNothing()
{
    auto delegate = std::make_shared<RecordingDelegate>();
    delegate->answered = {Protocol::Call::began};
    const std::weak_ptr<Protocol> weak = delegate;
    delegate.reset();
    QVERIFY(!OptionalDelegate::answers(weak, Protocol::Call::began));
    QVERIFY(!OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
}

void OptionalDelegateTest::argumentsArriveWhole()
{
    const auto delegate = std::make_shared<RecordingDelegate>();
    delegate->answered = {Protocol::Call::ended, Protocol::Call::took};
    const std::weak_ptr<Protocol> weak = delegate;
    OptionalDelegate::call(weak, Protocol::Call::ended, &Protocol::ended, 2,
                           QStringLiteral("text"));
    OptionalDelegate::call(weak, Protocol::Call::took, &Protocol::took, std::make_unique<int>(7));
    QCOMPARE(delegate->told,
             QList<QString>({QStringLiteral("ended 2 text"), QStringLiteral("took 7")}));
}

/// The owner may let go of it from inside the call.
void OptionalDelegateTest::aDelegateLivesUntilItsCallEnds()
{
    class LettingGo final : public Protocol
    {
      public:
        LettingGo(std::shared_ptr<Protocol> &owner, QList<QString> &told)
            : owner_(owner), told_(told)
        {
        }
        ~LettingGo() override { told_.append(QStringLiteral("gone")); }
        LettingGo(const LettingGo &) = delete;
        LettingGo &operator=(const LettingGo &) = delete;
        [[nodiscard]] bool answers(Call) const override { return true; }
        void began() override
        {
            owner_.reset();
            told_.append(QStringLiteral("let go"));
        }

      private:
        std::shared_ptr<Protocol> &owner_;
        QList<QString> &told_;
    };
    QList<QString> told;
    std::shared_ptr<Protocol> owner;
    owner = std::make_shared<LettingGo>(owner, told);
    const std::weak_ptr<Protocol> weak = owner;
    QVERIFY(OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
    QCOMPARE(told, QList<QString>({QStringLiteral("let go"), QStringLiteral("gone")}));
}

void OptionalDelegateTest::theDelegateIsHeldWeakly()
{
    const auto delegate = std::make_shared<RecordingDelegate>();
    delegate->answered = {Protocol::Call::began};
    const std::weak_ptr<Protocol> weak = delegate;
    QVERIFY(OptionalDelegate::call(weak, Protocol::Call::began, &Protocol::began));
    QCOMPARE(delegate.use_count(), 1L);
}

QTEST_APPLESS_MAIN(OptionalDelegateTest)
#include "OptionalDelegateTest.moc"
