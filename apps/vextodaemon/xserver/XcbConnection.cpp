#include "xserver/XcbConnection.hpp"

#include <cstdlib>
#include <cstring>

namespace vexto {

std::unique_ptr<XcbConnection> XcbConnection::open(const std::string& displayName,
                                                   std::string& problem)
{
    std::unique_ptr<XcbConnection> made(new XcbConnection);
    made->connection_ =
        xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), &made->screenNumber_);
    if (made->isBroken()) {
        const char* named = displayName.empty() ? std::getenv("DISPLAY") : displayName.c_str();
        problem = "cannot reach the X display " + std::string(named != nullptr ? named : "(none)");
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(made->connection_));
    for (int skipped = 0; screens.rem > 0 && skipped < made->screenNumber_; ++skipped) {
        xcb_screen_next(&screens);
    }
    if (screens.rem == 0) {
        problem = "the X display has no screen " + std::to_string(made->screenNumber_);
        return nullptr;
    }
    made->root_ = screens.data->root;
    xcb_intern_atom_cookie_t* cookies = xcb_ewmh_init_atoms(made->connection_, &made->ewmh_);
    made->ewmhReady_ = xcb_ewmh_init_atoms_replies(&made->ewmh_, cookies, nullptr) != 0;
    if (!made->ewmhReady_) {
        problem = "the X display did not answer for its EWMH atoms";
        return nullptr;
    }
    return made;
}

XcbConnection::~XcbConnection()
{
    if (ewmhReady_) {
        xcb_ewmh_connection_wipe(&ewmh_);
    }
    if (connection_ != nullptr) {
        xcb_disconnect(connection_);
    }
}

xcb_atom_t XcbConnection::atom(const char* name)
{
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection_, cookie, nullptr);
    const xcb_atom_t found = reply != nullptr ? reply->atom : XCB_NONE;
    std::free(reply);
    return found;
}

} // namespace vexto
