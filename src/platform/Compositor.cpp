#include "platform/Compositor.h"

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace {

struct Disconnect
{
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
struct Release
{
    void operator()(void *reply) const { std::free(reply); }
};
template <class Reply> using Answer = std::unique_ptr<Reply, Release>;

xcb_atom_t atomOf(xcb_connection_t *connection, const QByteArray &name)
{
    const auto request =
        xcb_intern_atom(connection, 1, std::uint16_t(name.size()), name.constData());
    const Answer<xcb_intern_atom_reply_t> answer(
        xcb_intern_atom_reply(connection, request, nullptr));
    return answer ? answer->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool hasOwner(xcb_connection_t *connection, xcb_atom_t selection)
{
    const auto request = xcb_get_selection_owner(connection, selection);
    const Answer<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(connection, request, nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

bool runsOnX11()
{
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0)
        return false;
    const xcb_atom_t selection =
        atomOf(connection.get(), "_NET_WM_CM_S" + QByteArray::number(screen));
    return selection != XCB_ATOM_NONE && hasOwner(connection.get(), selection);
}

} // namespace

bool Compositor::isRunning(const QString &platformName)
{
    return platformName != QLatin1String("xcb") || runsOnX11();
}
