// SPDX-License-Identifier: MIT
#include <tests/support/X11Input.h>

#include <tests/support/WaitFor.h>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace vx::test {

namespace {

struct Free {
    void operator()(void* storage) const { std::free(storage); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

} // namespace

X11Input::X11Input() : m_Connection(xcb_connect(nullptr, nullptr)) {
    m_Screen = xcb_setup_roots_iterator(xcb_get_setup(m_Connection)).data;
}

X11Input::~X11Input() {
    xcb_disconnect(m_Connection);
}

std::uint32_t X11Input::atom(const char* name) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_Connection, xcb_intern_atom(m_Connection, 0, std::uint16_t(std::strlen(name)), name), nullptr));
    return reply->atom;
}

std::string X11Input::titleOf(std::uint32_t window) {
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_Connection, xcb_get_property(m_Connection, 0, window, atom("_NET_WM_NAME"), XCB_ATOM_ANY, 0, 1024),
        nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            std::size_t(xcb_get_property_value_length(reply.get()))};
}

std::vector<X11Input::Window> X11Input::windows(const std::string& title) {
    std::vector<Window> found;
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_Connection, xcb_query_tree(m_Connection, m_Screen->root), nullptr));
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
        const xcb_window_t id = xcb_query_tree_children(tree.get())[index];
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_Connection, xcb_get_window_attributes(m_Connection, id), nullptr));
        const Reply<xcb_get_geometry_reply_t> frame(
            xcb_get_geometry_reply(m_Connection, xcb_get_geometry(m_Connection, id), nullptr));
        if (attributes && frame && attributes->map_state == XCB_MAP_STATE_VIEWABLE && titleOf(id) == title)
            found.push_back({id, frame->x, frame->y, frame->width, frame->height});
    }
    return found;
}

X11Input::Window X11Input::waitForWindow(const std::string& title) {
    std::vector<Window> found;
    waitFor([&] {
        found = windows(title);
        return !found.empty();
    });
    return found.empty() ? Window() : found.front();
}

bool X11Input::waitForEnd(const Window& window) {
    return waitFor([&] {
        return !Reply<xcb_get_geometry_reply_t>(
            xcb_get_geometry_reply(m_Connection, xcb_get_geometry(m_Connection, window.id), nullptr));
    });
}

void X11Input::fake(int type, int detail, int x, int y) {
    xcb_test_fake_input(m_Connection, std::uint8_t(type), std::uint8_t(detail), XCB_CURRENT_TIME,
                        m_Screen->root, std::int16_t(x), std::int16_t(y), 0);
    xcb_flush(m_Connection);
}

int X11Input::keycode(std::uint32_t keysym) {
    const xcb_setup_t* setup = xcb_get_setup(m_Connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const Reply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        m_Connection, xcb_get_keyboard_mapping(m_Connection, setup->min_keycode, std::uint8_t(count)),
        nullptr));
    for (int key = 0; key < count; ++key)
        if (xcb_get_keyboard_mapping_keysyms(map.get())[key * map->keysyms_per_keycode] == keysym)
            return setup->min_keycode + key;
    return 0;
}

void X11Input::press(std::uint32_t keysym, std::uint32_t held) {
    if (held)
        fake(XCB_KEY_PRESS, keycode(held), 0, 0);
    fake(XCB_KEY_PRESS, keycode(keysym), 0, 0);
    fake(XCB_KEY_RELEASE, keycode(keysym), 0, 0);
    if (held)
        fake(XCB_KEY_RELEASE, keycode(held), 0, 0);
}

void X11Input::move(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void X11Input::click(int x, int y, int button) {
    move(x, y);
    fake(XCB_BUTTON_PRESS, button, 0, 0);
    fake(XCB_BUTTON_RELEASE, button, 0, 0);
}

void X11Input::drag(int fromX, int fromY, int toX, int toY) {
    move(fromX, fromY);
    fake(XCB_BUTTON_PRESS, 1, 0, 0);
    move(toX, toY);
    fake(XCB_BUTTON_RELEASE, 1, 0, 0);
}

void X11Input::close(const Window& window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window.id;
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(m_Connection, 0, window.id, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(m_Connection);
}

std::vector<std::uint32_t> X11Input::pixels(const Window& window) {
    const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        m_Connection,
        xcb_get_image(m_Connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_Screen->root, std::int16_t(window.x),
                      std::int16_t(window.y), std::uint16_t(window.width), std::uint16_t(window.height), ~0u),
        nullptr));
    std::vector<std::uint32_t> result(std::size_t(window.width) * std::size_t(window.height));
    if (image)
        std::memcpy(result.data(), xcb_get_image_data(image.get()), result.size() * 4);
    for (std::uint32_t& pixel : result)
        pixel &= 0xffffff;
    return result;
}

} // namespace vx::test
