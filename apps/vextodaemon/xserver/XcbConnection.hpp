#pragma once

#include <memory>
#include <string>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

namespace vexto {

// The daemon's connection to the X server, with the EWMH atoms interned once.
class XcbConnection {
public:
    // None, with the reason in `problem`, when the display cannot be reached.
    static std::unique_ptr<XcbConnection> open(const std::string& displayName,
                                               std::string& problem);
    ~XcbConnection();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;

    xcb_connection_t* get() const { return connection_; }
    xcb_ewmh_connection_t& ewmh() { return ewmh_; }
    xcb_window_t root() const { return root_; }
    int screenNumber() const { return screenNumber_; }
    int descriptor() const { return xcb_get_file_descriptor(connection_); }
    // The server went away or closed the connection.
    bool isBroken() const { return xcb_connection_has_error(connection_) != 0; }
    xcb_atom_t atom(const char* name);

private:
    XcbConnection() = default;

    xcb_connection_t* connection_ = nullptr;
    xcb_ewmh_connection_t ewmh_{};
    bool ewmhReady_ = false;
    xcb_window_t root_ = XCB_NONE;
    int screenNumber_ = 0;
};

} // namespace vexto
