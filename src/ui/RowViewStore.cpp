#include "ui/RowViewStore.h"

#include <algorithm>

DefaultTableRowView *RowViewStore::shown(int row) const
{
    const auto found = shown_.find(row);
    return found == shown_.end() ? nullptr : found->second.get();
}

DefaultTableRowView &RowViewStore::show(int row, View view)
{
    View &place = shown_[row];
    if (place)
        hide(std::move(place));
    place = std::move(view);
    return *place;
}

RowViewStore::View RowViewStore::reuse(const QString &identifier)
{
    const auto found =
        std::find_if(waiting_.begin(), waiting_.end(),
                     [&identifier](const View &view) { return view->identifier() == identifier; });
    if (found == waiting_.end())
        return nullptr;
    View view = std::move(*found);
    waiting_.erase(found);
    return view;
}

void RowViewStore::hide(View view)
{
    // The next row that it stands for begins without the mouse and the colour of this one.
    view->setRedisplay({});
    view->updateTrackingAreas();
    view->overWriteSelectionColorWithColor(std::nullopt);
    waiting_.push_back(std::move(view));
}

void RowViewStore::keepShown(int first, int last)
{
    for (auto at = shown_.begin(); at != shown_.end();) {
        if (at->first >= first && at->first <= last) {
            ++at;
        } else {
            hide(std::move(at->second));
            at = shown_.erase(at);
        }
    }
}
