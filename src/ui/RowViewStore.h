#pragma once

#include "ui/DefaultTableRowView.h"

#include <map>
#include <memory>
#include <vector>

/// The row views of a table: one for each row that is shown, and those that wait to be used again.
///
/// Thread: main
/// Owns:   the row views
class RowViewStore
{
  public:
    using View = std::unique_ptr<DefaultTableRowView>;

    /// Null where none is shown for this row.
    [[nodiscard]] DefaultTableRowView *shown(int row) const;
    DefaultTableRowView &show(int row, View view);

    /// Takes one out that waits under this identifier; null if there is none.
    [[nodiscard]] View reuse(const QString &identifier);

    /// What is shown outside of these rows waits from now on; outside of none: all.
    void keepShown(int first, int last);
    void hideAll() { keepShown(0, -1); }

    template <class Operation> void forEachShown(Operation operation) const
    {
        for (const auto &[row, view] : shown_)
            operation(*view);
    }

    [[nodiscard]] std::size_t shownCount() const { return shown_.size(); }
    [[nodiscard]] std::size_t waitingCount() const { return waiting_.size(); }

  private:
    void hide(View view);

    std::map<int, View> shown_;
    std::vector<View> waiting_;
};
