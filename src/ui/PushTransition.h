#pragma once

#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QSize>
#include <QVariantAnimation>

#include <functional>

class QWidget;

/// A push: what was shown leaves as a picture while the new view comes in from one side, both
/// together and clipped by their holder. One object serves all pushes of its owner.
///
/// A push that begins while another runs ends that one where it stands. With reduced motion nothing
/// slides. The signals come later, from the event loop, in either case.
///
/// Thread:       main
/// Owns:         the picture that leaves
/// Holds weakly: the new view, which ends at the holder's origin
class PushTransition : public QObject
{
    Q_OBJECT

  public:
    enum class Type { Push };
    /// The side of the screen that the new view comes from.
    enum class Subtype { FromTop, FromBottom, FromRight, FromLeft };

    explicit PushTransition(QObject *parent = nullptr);
    ~PushTransition() override;

    [[nodiscard]] Type type() const { return type_; }
    void setType(Type type) { type_ = type; }
    [[nodiscard]] Subtype subtype() const { return subtype_; }
    void setSubtype(Subtype subtype) { subtype_ = subtype; }
    /// In seconds.
    [[nodiscard]] double duration() const { return duration_; }
    void setDuration(double seconds) { duration_ = seconds; }

    /// Asks whether the desktop wants less motion; the desktop's own answer unless replaced.
    void setPrefersReducedMotion(std::function<bool()> predicate);
    [[nodiscard]] bool prefersReducedMotion() const { return prefersReducedMotion_(); }

    /// `leaving` shows the holder's whole area; it may be null.
    void run(QWidget *holder, const QPixmap &leaving, QWidget *entering);
    [[nodiscard]] bool isRunning() const { return isRunning_; }
    /// The widget that shows the leaving picture, a child of the holder; null when nothing slides.
    [[nodiscard]] QWidget *leavingPicture() const { return picture_; }

    /// Where the new view stands when this part, 0 to 1, of the way is done. Pure.
    static QPoint entryOffset(Subtype subtype, const QSize &holder, double progress);

  Q_SIGNALS:
    void didStart();
    /// False if another push ended this one.
    void didStop(bool finished);

  private:
    void interrupt();
    void slide(QWidget *holder, const QPixmap &leaving);
    void place(double progress);
    void stop();

    Type type_ = Type::Push;
    Subtype subtype_ = Subtype::FromRight;
    double duration_ = 0;
    std::function<bool()> prefersReducedMotion_;
    QVariantAnimation animation_;
    QPointer<QWidget> holder_;
    QPointer<QWidget> picture_;
    QPointer<QWidget> entering_;
    bool isRunning_ = false;
    unsigned generation_ = 0;
};
