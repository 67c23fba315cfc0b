#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"
#include "platform/qt/QtMainLoop.h"
#include "support/BecomesTrue.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace quillbrook {

/// Another client of the server: programs with their windows, and a window manager played by hand.
class Client {
public:
    Client()
        : connection(xcb_connect(nullptr, nullptr))
        , root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
    {
    }
    ~Client() { xcb_disconnect(connection); }

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    xcb_atom_t atom(const std::string& name)
    {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
            nullptr));
        return reply->atom;
    }

    xcb_window_t makeBareWindow(xcb_window_t parent = XCB_WINDOW_NONE)
    {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, 0, window, parent != XCB_WINDOW_NONE ? parent : root, 0, 0,
            10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, 0, nullptr);
        return window;
    }

    xcb_window_t makeWindow(const std::string& className, xcb_window_t parent = XCB_WINDOW_NONE)
    {
        const xcb_window_t window = makeBareWindow(parent);
        setClass(window, className, className);
        return window;
    }

    void setClass(xcb_window_t window, const std::string& instance, const std::string& className)
    {
        setText(window, "WM_CLASS", instance + '\0' + className + '\0');
    }

    void setNumber(
        xcb_window_t window, const std::string& property, xcb_atom_t type, std::uint32_t number)
    {
        xcb_change_property(
            connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, 1, &number);
        xcb_flush(connection);
    }

    void setText(xcb_window_t window, const std::string& property, const std::string& text)
    {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(property),
            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
        xcb_flush(connection);
    }

    /// What a window manager shows of itself; gives the window by which it does.
    xcb_window_t manage(const std::string& supported = "_NET_ACTIVE_WINDOW")
    {
        const xcb_window_t check = makeWindow("wm");
        setNumber(root, "_NET_SUPPORTED", XCB_ATOM_ATOM, atom(supported));
        setNumber(check, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, check);
        setNumber(root, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, check);
        return check;
    }

    void activate(xcb_window_t window)
    {
        setNumber(root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, window);
    }

    void show(xcb_window_t window)
    {
        xcb_map_window(connection, window);
        sync();
    }

    void focus(xcb_window_t window)
    {
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        sync();
    }

    void destroy(xcb_window_t window)
    {
        xcb_destroy_window(connection, window);
        sync();
    }

    /// Waits until the server has done all that was asked.
    void sync() { atom("_NET_ACTIVE_WINDOW"); }

    xcb_connection_t* connection;
    xcb_window_t root;
};

/// The recorder's connection and another client on a server of their own.
class X11Test : public testing::Test {
protected:
    explicit X11Test(const std::vector<std::string>& serverOptions = {}) : server(serverOptions) {}

    static void runFor(int milliseconds)
    {
        const QDeadlineTimer deadline(milliseconds);
        becomesTrue([&deadline] { return deadline.hasExpired(); });
    }

    static void pressKeys(const std::string& keys)
    {
        ASSERT_EQ(std::system(("xdotool " + keys).c_str()), 0);
    }

    XServer server;
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    QtMainLoop mainLoop{};
    X11Connection x11{};
    Client client{};
};

} // namespace quillbrook
