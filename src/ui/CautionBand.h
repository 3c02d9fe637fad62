#pragma once

#include "ui/Caution.h"

#include <QStringList>
#include <QWidget>

class CautionList;
class LinkButton;

/// A warning line with its icon: the gravest caution, and a link to the others. Draws nothing
/// without one, and keeps its place. Screen readers are told when a caution of another kind
/// appears, wherever it stands.
///
/// Thread: main
class CautionBand : public QWidget
{
    Q_OBJECT

  public:
    explicit CautionBand(QWidget *parent = nullptr);

    void setCautions(const CautionTexts &cautions);
    [[nodiscard]] QStringList cautions() const;
    /// From the edges to the icon, and to what stands at the right.
    void setMargin(int margin);
    /// Room for what a view puts at the right end.
    void setReservedWidth(int width);

    [[nodiscard]] LinkButton *moreLink() const { return moreLink_; }
    /// The list of all; made when it is first opened.
    [[nodiscard]] CautionList *list() const { return list_; }
    [[nodiscard]] QSize sizeHint() const override;

  Q_SIGNALS:
    /// One of another kind; screen readers are told by the band itself.
    void cautionAppeared(const QString &caution);

  protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

  private:
    void tell(const CautionTexts &before);
    [[nodiscard]] QString gravest() const;
    void openList();
    void placeLink();
    [[nodiscard]] QRect textRect() const;
    [[nodiscard]] QString shownText() const;

    CautionTexts cautions_;
    LinkButton *moreLink_;
    CautionList *list_ = nullptr;
    int margin_ = 12;
    int reservedWidth_ = 0;
};
