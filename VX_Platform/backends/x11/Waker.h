// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// Ends a wait of the main thread, from any thread.
class Waker {
public:
    Waker();
    ~Waker();
    Waker(const Waker&) = delete;
    Waker& operator=(const Waker&) = delete;

    void wake();
    /// Whether there was a wake since the last call.
    bool take();
    /// Waits up to `seconds` for a wake, or for something to read on `descriptor` (negative for none).
    void wait(double seconds, int descriptor) const;

private:
    int m_Descriptor;
};

} // namespace vx
