#pragma once

#include "ui/PopupCard.h"

#include <QStringList>

class QListView;
class QStringListModel;

/// All cautions, one below the other, over the band that shows the gravest.
///
/// Thread: main
class CautionList : public PopupCard
{
    Q_OBJECT

  public:
    explicit CautionList(QWidget *opener);

    void setCautions(const QStringList &cautions);
    void open();

    [[nodiscard]] QListView *view() const { return view_; }
    static QRect wantedRect(const QRect &band, int rows, double scale);

  protected:
    void cardPlaced(const QRect &card) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    QStringListModel *model_;
    QListView *view_;
};
