// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

struct _XDisplay;

namespace vx {

/// Keeps the process alive where Xlib would end it: a request that fails on the guarded connection is a line
/// in the log, and the connection's end is noted. Other connections keep the handlers that they had. Any
/// thread; made and ended on the main one, while the connection is open.
class ConnectionGuard {
public:
    explicit ConnectionGuard(_XDisplay* connection);
    ~ConnectionGuard();
    ConnectionGuard(const ConnectionGuard&) = delete;
    ConnectionGuard& operator=(const ConnectionGuard&) = delete;

    _XDisplay* connection() const { return m_Connection; }
    /// Whether the server, or another client through it, has ended the connection. Seen at once, without a
    /// request.
    bool hasEnded() const;
    void noteEnd() const;
    /// Somebody has closed the connection on our side; nothing of it may be used any more.
    void noteClosed();

    /// While it lives, failed requests are no lines: for work on a window that may be gone.
    class Quiet {
    public:
        explicit Quiet(const ConnectionGuard& guard) : m_Guard(guard) { ++guard.m_Quiet; }
        ~Quiet() { --m_Guard.m_Quiet; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        const ConnectionGuard& m_Guard;
    };
    bool isQuiet() const { return m_Quiet > 0; }

private:
    _XDisplay* m_Connection;
    const int m_Descriptor;
    mutable std::atomic<bool> m_Ended{false};
    mutable std::atomic<int> m_Quiet{0};
};

} // namespace vx
