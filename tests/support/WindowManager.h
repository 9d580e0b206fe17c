// SPDX-License-Identifier: MIT
#pragma once

#include <tests/support/WaitFor.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

// Behind the others: its macros take common words.
#include <X11/Xlib.h>

namespace vx::test {

/// A window manager at work on the server that DISPLAY names, and a connection to that.
class WindowManager {
public:
    WindowManager() {
        // What is shown while it starts may stay without it; what was there before is taken in last of all.
        const Window probe = XCreateSimpleWindow(server, DefaultRootWindow(server), 0, 0, 9, 9, 0, 0, 0);
        XMapWindow(server, probe);
        XSync(server, False);
        m_Process = fork();
        if (m_Process == 0) {
            execlp("openbox", "openbox", "--sm-disable", nullptr);
            _exit(127);
        }
        waitFor([&] { return isManaged(probe); });
        XDestroyWindow(server, probe);
        waitFor([&] { return clients().empty(); });
    }
    ~WindowManager() {
        kill(m_Process, SIGTERM);
        waitpid(m_Process, nullptr, 0);
        XCloseDisplay(server);
    }

    std::vector<Window> clients() const { return property(DefaultRootWindow(server), "_NET_CLIENT_LIST"); }
    bool isManaged(Window window) const { return !property(window, "WM_STATE").empty(); }
    Atom atom(const char* name) const { return XInternAtom(server, name, False); }
    std::vector<Atom> property(Window window, const char* name) const {
        Atom type = 0;
        int bits = 0;
        unsigned long count = 0, left = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(server, window, atom(name), 0, 99, False, AnyPropertyType, &type, &bits, &count,
                           &left, &value);
        const auto* const words = reinterpret_cast<const Atom*>(value);
        const std::vector<Atom> all(words, words + count);
        if (value)
            XFree(value);
        return all;
    }

    Display* const server = XOpenDisplay(nullptr);

private:
    pid_t m_Process = 0;
};

} // namespace vx::test
