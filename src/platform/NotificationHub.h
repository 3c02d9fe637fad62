#pragma once

#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

/// Notifications inside the application: posted by name, delivered at once to everyone who observes
/// the name, in the order in which they began to.
///
/// Thread:     main
/// Owns:       the observers' handlers, until their tokens go
/// Invariant:  an observer that leaves while a notification is delivered hears no more of it; one
///             that joins meanwhile hears the next one
class NotificationHub
{
  public:
    /// What is posted: the name, the sender where there is one, and what comes with it.
    struct Notification
    {
        QLatin1String name;
        const void *object = nullptr;
        QVariant userInfo;
    };
    using Handler = std::function<void(const Notification &)>;

    /// Observation lasts as long as its token.
    class Token
    {
      public:
        Token() = default;
        ~Token() { stop(); }
        Token(Token &&other) noexcept { *this = std::move(other); }
        Token &operator=(Token &&other) noexcept;

        void stop();

      private:
        friend class NotificationHub;
        struct Observer;
        explicit Token(std::shared_ptr<Observer> observer);

        std::shared_ptr<Observer> observer_;
    };

    static NotificationHub &shared();

    [[nodiscard]] Token observe(QLatin1String name, Handler handler);
    void post(QLatin1String name, const void *object = nullptr, const QVariant &userInfo = {});

  private:
    std::vector<std::weak_ptr<Token::Observer>> observers_;
};

/// The names of the application's notifications.
namespace NotificationName {

inline constexpr QLatin1String applicationDidStartGUI("ApplicationDidStartGUI");
inline constexpr QLatin1String folderScanUrls("FolderScanUrls");
inline constexpr QLatin1String appearanceChanged("AppearanceChangedNotification");
inline constexpr QLatin1String colorThemeChanged("ColorThemeChangedNotification");
inline constexpr QLatin1String windowDidBecomeMain("WindowDidBecomeMain");
inline constexpr QLatin1String windowDidResignMain("WindowDidResignMain");
inline constexpr QLatin1String reopenMainWindow("ReopenMainWindow");
/// A run of the eraser, from Start to what is told at its end.
inline constexpr QLatin1String runDidStart("RunDidStart");
inline constexpr QLatin1String runDidEnd("RunDidEnd");
inline constexpr QLatin1String applicationWillTerminate("ApplicationWillTerminate");

} // namespace NotificationName
