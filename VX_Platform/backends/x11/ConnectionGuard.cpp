// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/ConnectionGuard.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/LineAMinute.h>

#include <X11/Xlib.h>
#include <poll.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace vx {

namespace {

// Never destroyed: another connection may fail while the process ends.
struct Guards {
    std::mutex lock;
    std::vector<const ConnectionGuard*> all;
    XErrorHandler formerErrors = nullptr;
    XIOErrorHandler formerEnds = nullptr;
    bool installed = false;
    std::map<std::pair<int, int>, LineAMinute> told; // by error and request
};

Guards& guards() {
    static Guards* guards = new Guards;
    return *guards;
}

const ConnectionGuard* guardOf(::Display* connection) {
    std::lock_guard lock(guards().lock);
    const auto& all = guards().all;
    const auto found = std::ranges::find(all, connection, &ConnectionGuard::connection);
    return found == all.end() ? nullptr : *found;
}

// A window that is gone fails each request for it, again and again.
bool repeats(const XErrorEvent& error) {
    std::lock_guard lock(guards().lock);
    return !guards().told[{error.error_code, error.request_code}].ask(Clock::system().now());
}

int logError(::Display* connection, XErrorEvent* error) {
    const ConnectionGuard* guard = guardOf(connection);
    if (!guard)
        return guards().formerErrors ? guards().formerErrors(connection, error) : 0;
    if (guard->isQuiet() || repeats(*error))
        return 0;
    char text[128];
    XGetErrorText(connection, error->error_code, text, sizeof text);
    NSLog("X11: %s (request %d.%d, resource 0x%lx)", text, error->request_code, error->minor_code,
          error->resourceid);
    return 0;
}

int noteEnd(::Display* connection) {
    if (const ConnectionGuard* guard = guardOf(connection)) {
        guard->noteEnd();
        return 0;
    }
    return guards().formerEnds ? guards().formerEnds(connection) : 0;
}

// In the place of Xlib's, which ends the process.
void stayAlive(::Display*, void*) {}

void install() {
    if (std::exchange(guards().installed, true))
        return;
    guards().formerErrors = XSetErrorHandler(logError);
    guards().formerEnds = XSetIOErrorHandler(noteEnd);
}

// Handlers that were put in place meanwhile stay; they hand on to these, and these to the former ones.
void putBack() {
    const XErrorHandler errors = XSetErrorHandler(guards().formerErrors);
    const XIOErrorHandler ends = XSetIOErrorHandler(guards().formerEnds);
    if (errors != logError)
        XSetErrorHandler(errors);
    if (ends != noteEnd)
        XSetIOErrorHandler(ends);
    guards().installed = errors != logError || ends != noteEnd;
}

} // namespace

ConnectionGuard::ConnectionGuard(::Display* connection)
    : m_Connection(connection), m_Descriptor(ConnectionNumber(connection)) {
    install();
    XSetIOErrorExitHandler(connection, stayAlive, nullptr);
    std::lock_guard lock(guards().lock);
    guards().all.push_back(this);
}

ConnectionGuard::~ConnectionGuard() {
    // Without one of its own, Xlib's comes back.
    if (m_Connection)
        XSetIOErrorExitHandler(m_Connection, nullptr, nullptr);
    std::unique_lock lock(guards().lock);
    std::erase(guards().all, this);
    if (!guards().all.empty())
        return;
    lock.unlock();
    putBack();
}

bool ConnectionGuard::hasEnded() const {
    if (m_Ended || !m_Connection)
        return true;
    pollfd wanted{m_Descriptor, POLLRDHUP, 0};
    if (poll(&wanted, 1, 0) > 0)
        noteEnd();
    return m_Ended;
}

void ConnectionGuard::noteClosed() {
    std::lock_guard lock(guards().lock);
    m_Connection = nullptr;
}

void ConnectionGuard::noteEnd() const {
    if (!m_Ended.exchange(true))
        NSLog("X11: the connection to %s has ended", DisplayString(m_Connection));
}

} // namespace vx
