// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/PresentSource.h>

#include <poll.h>
#include <xcb/present.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <ctime>

namespace vx {

namespace {

double monotonicSeconds() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec + time.tv_nsec * 1e-9;
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

    Outcome wait(double seconds, int wakeDescriptor) override {
        const double end = monotonicSeconds() + seconds;
        for (;;) {
            if (takeAnswer())
                return Outcome::refresh;
            const double left = end - monotonicSeconds();
            if (left <= 0.0 || xcb_connection_has_error(m_Connection))
                return Outcome::silent;
            pollfd wanted[] = {{xcb_get_file_descriptor(m_Connection), POLLIN, 0},
                               {wakeDescriptor, POLLIN, 0}};
            poll(wanted, 2, static_cast<int>(left * 1000.0) + 1);
            if (wanted[1].revents & POLLIN)
                return Outcome::woken;
        }
    }

private:
    // Takes in what has come; true when the answer to the last question was among it.
    bool takeAnswer() {
        bool answered = false;
        while (m_Events) {
            xcb_generic_event_t* event = xcb_poll_for_special_event(m_Connection, m_Events);
            if (!event)
                break;
            auto* complete = reinterpret_cast<xcb_present_complete_notify_event_t*>(event);
            answered |= complete->event_type == XCB_PRESENT_COMPLETE_NOTIFY && complete->serial == m_Serial;
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
    std::uint32_t m_Serial = 0;
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
