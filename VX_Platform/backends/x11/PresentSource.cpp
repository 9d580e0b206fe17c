// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/PresentSource.h>

#include <VX_Platform/Foundation/private/Clock.h>

#include <poll.h>
#include <xcb/present.h>
#include <xcb/xcb.h>

#include <atomic>
#include <cstdlib>
#include <ctime>

namespace vx {

namespace {

// A server on another machine, or a strange driver, dates its refreshes by a clock that is not ours.
constexpr std::uint64_t kBelievable = Clock::kSecond;

std::uint64_t timeOf(const xcb_present_complete_notify_event_t& event) {
    const std::uint64_t now = Clock::system().now(), told = event.ust * 1000;
    return told <= now && now - told < kBelievable ? told : now;
}

// No two sources of the process ask by the same numbers.
std::uint32_t nextFirstSerial() {
    static std::atomic<std::uint32_t> sources{0};
    return ++sources << 22;
}

class PresentSource : public RefreshSource {
public:
    PresentSource(xcb_connection_t* connection, xcb_window_t window)
        : m_Connection(connection), m_Window(window) {
        const std::uint32_t id = xcb_generate_id(connection);
        m_Events = xcb_register_for_special_xge(connection, &xcb_present_id, id, nullptr);
        xcb_present_select_input(connection, id, window, XCB_PRESENT_EVENT_MASK_COMPLETE_NOTIFY);
        xcb_flush(connection);
    }
    ~PresentSource() override {
        if (m_Events)
            xcb_unregister_for_special_event(m_Connection, m_Events);
        xcb_disconnect(m_Connection);
    }

    const char* name() const override { return "Present events"; }

    void ask() override {
        // The next refresh whatever its number: every one is 0 modulo 1.
        xcb_present_notify_msc(m_Connection, m_Window, ++m_Serial, 0, 1, 0);
        xcb_flush(m_Connection);
    }

    Outcome wait(std::uint64_t until, int wakeDescriptor, Refresh& refresh) override {
        for (;;) {
            if (takeAnswer(refresh))
                return Outcome::refresh;
            if (!pause(until, wakeDescriptor))
                return Outcome::woken;
            if (Clock::system().now() >= until)
                return takeAnswer(refresh) ? Outcome::refresh : Outcome::silent;
        }
    }

private:
    // Until something comes or the time is over; false when woken.
    bool pause(std::uint64_t until, int wakeDescriptor) {
        const std::uint64_t now = Clock::system().now(), left = until > now ? until - now : 0;
        const std::timespec rest{static_cast<std::time_t>(left / Clock::kSecond),
                                 static_cast<long>(left % Clock::kSecond)};
        // A connection that has ended stays readable for ever.
        const int connection =
            xcb_connection_has_error(m_Connection) ? -1 : xcb_get_file_descriptor(m_Connection);
        pollfd wanted[] = {{connection, POLLIN, 0}, {wakeDescriptor, POLLIN, 0}};
        ppoll(wanted, 2, &rest, nullptr);
        return !(wanted[1].revents & POLLIN);
    }

    // All who listen to the window are told of every presentation on it: the driver's own, and what was asked
    // by a source that has been replaced.
    bool isAnswer(const xcb_present_complete_notify_event_t& event) const {
        return event.event_type == XCB_PRESENT_COMPLETE_NOTIFY &&
               event.kind == XCB_PRESENT_COMPLETE_KIND_NOTIFY_MSC &&
               event.serial - m_FirstSerial <= m_Serial - m_FirstSerial;
    }

    // Takes in what has come; true when an answer was among it. Of several, the last one counts.
    bool takeAnswer(Refresh& refresh) {
        bool answered = false;
        while (m_Events) {
            xcb_generic_event_t* event = xcb_poll_for_special_event(m_Connection, m_Events);
            if (!event)
                break;
            const auto& complete = *reinterpret_cast<xcb_present_complete_notify_event_t*>(event);
            if (isAnswer(complete)) {
                refresh = {timeOf(complete), complete.msc, 0};
                answered = true;
            }
            std::free(event);
        }
        // Errors (of a window that has gone) come on the ordinary queue and answer nothing.
        while (xcb_generic_event_t* other = xcb_poll_for_event(m_Connection))
            std::free(other);
        return answered;
    }

    xcb_connection_t* m_Connection;
    xcb_window_t m_Window;
    xcb_special_event_t* m_Events = nullptr;
    const std::uint32_t m_FirstSerial = nextFirstSerial();
    std::uint32_t m_Serial = m_FirstSerial;
};

} // namespace

std::unique_ptr<RefreshSource> makePresentSource(unsigned long window) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_query_extension_reply_t* present =
        xcb_connection_has_error(connection) ? nullptr : xcb_get_extension_data(connection, &xcb_present_id);
    if (!present || !present->present) {
        xcb_disconnect(connection);
        return nullptr;
    }
    std::free(
        xcb_present_query_version_reply(connection, xcb_present_query_version(connection, 1, 0), nullptr));
    return std::make_unique<PresentSource>(connection, static_cast<xcb_window_t>(window));
}

} // namespace vx
