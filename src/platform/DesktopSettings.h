#pragma once

#include <QObject>
#include <QString>

class QDBusVariant;

/// What the user has asked of the whole desktop: less motion, more contrast. Asked of the desktop
/// portal (org.freedesktop.portal.Settings), which also tells of changes.
///
/// Thread:  main
/// Blocks:  never on the portal; neither wish stands until it has answered
/// Failure: without a session bus, a portal or a setting the wish does not stand; nothing is said
class DesktopSettings : public QObject
{
    Q_OBJECT

  public:
    /// Over the connection of this name; the session bus where none is given.
    explicit DesktopSettings(const QString &connection = {});

    /// The process's own. Made at first use.
    static DesktopSettings &shared();

    [[nodiscard]] bool prefersReducedMotion() const { return !hasAnimations_; }
    [[nodiscard]] bool prefersHighContrast() const { return hasMoreContrast_ || hasContrastTheme_; }

  Q_SIGNALS:
    /// One of the wishes is another one than before.
    void changed();

  private Q_SLOTS:
    void takeSetting(const QString &group, const QString &key, const QDBusVariant &value);

  private:
    void ask(const QString &connection, const QString &group, const QString &key);

    bool hasAnimations_ = true;
    bool hasMoreContrast_ = false;
    bool hasContrastTheme_ = false;
};
