#pragma once

#include "engine/WipeDescriptionObject.h"
#include "ui/PopupCard.h"

#include <cstdint>
#include <vector>

class QListView;
class QStandardItemModel;

/// The list of the wipe methods, each with its passes. Opens so that the chosen row lies over what
/// opened it. It is made when the methods are given, not when it opens.
///
/// Thread: main
class MethodList : public PopupCard
{
    Q_OBJECT

  public:
    explicit MethodList(QWidget *opener);

    /// A method's number is its index; entry 0 is no method.
    void setMethods(const std::vector<WipeDescriptionObject> &methods);
    /// The checked row; none for a number outside the list.
    void setCurrentMethod(std::int64_t method);
    void open();

    [[nodiscard]] QListView *view() const { return view_; }
    /// The place wanted for the card when `opener` opens it. Pure.
    static QRect wantedRect(const QRect &opener, int rows, int chosenRow, double scale);

  Q_SIGNALS:
    void methodChosen(std::int64_t method);

  protected:
    void cardPlaced(const QRect &card) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void choose(const QModelIndex &index);
    bool handleKey(int key);

    QStandardItemModel *model_;
    QListView *view_;
    std::int64_t current_ = 0;
};
