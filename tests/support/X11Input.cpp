// SPDX-License-Identifier: MIT
#include <tests/support/X11Input.h>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace vx::test {

namespace {

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, std::free};
}

} // namespace

X11Input::X11Input() : m_Connection(xcb_connect(nullptr, nullptr)) {
    m_Screen = xcb_setup_roots_iterator(xcb_get_setup(m_Connection)).data;
}

X11Input::~X11Input() {
    // Of a connection that is closed a server drops what it has not read yet.
    owned(xcb_get_input_focus_reply(m_Connection, xcb_get_input_focus(m_Connection), nullptr));
    xcb_disconnect(m_Connection);
}

std::uint32_t X11Input::root() const {
    return m_Screen->root;
}

std::uint32_t X11Input::atom(const char* name) {
    const auto cookie = xcb_intern_atom(m_Connection, 0, std::uint16_t(std::strlen(name)), name);
    return owned(xcb_intern_atom_reply(m_Connection, cookie, nullptr))->atom;
}

std::string X11Input::titleOf(std::uint32_t window) {
    const auto cookie =
        xcb_get_property(m_Connection, 0, window, atom("_NET_WM_NAME"), XCB_ATOM_ANY, 0, 1024);
    const auto reply = owned(xcb_get_property_reply(m_Connection, cookie, nullptr));
    return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               std::size_t(xcb_get_property_value_length(reply.get())))
                 : std::string();
}

std::vector<X11Input::Window> X11Input::windows(const std::string& title) {
    std::vector<Window> found;
    xcb_connection_t* c = m_Connection;
    const auto tree = owned(xcb_query_tree_reply(c, xcb_query_tree(c, m_Screen->root), nullptr));
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
        const xcb_window_t id = xcb_query_tree_children(tree.get())[index];
        const auto state =
            owned(xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, id), nullptr));
        const auto frame = owned(xcb_get_geometry_reply(c, xcb_get_geometry(c, id), nullptr));
        if (state && frame && state->map_state == XCB_MAP_STATE_VIEWABLE && titleOf(id) == title)
            found.push_back({id, frame->x, frame->y, frame->width, frame->height});
    }
    return found;
}

void X11Input::fake(int type, int detail, int x, int y) {
    xcb_test_fake_input(m_Connection, std::uint8_t(type), std::uint8_t(detail), XCB_CURRENT_TIME,
                        m_Screen->root, std::int16_t(x), std::int16_t(y), 0);
    xcb_flush(m_Connection);
}

int X11Input::keycode(std::uint32_t keysym) {
    const xcb_setup_t* setup = xcb_get_setup(m_Connection);
    const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(m_Connection, setup->min_keycode, count);
    const auto map = owned(xcb_get_keyboard_mapping_reply(m_Connection, cookie, nullptr));
    for (int key = 0; key < count; ++key)
        if (xcb_get_keyboard_mapping_keysyms(map.get())[key * map->keysyms_per_keycode] == keysym)
            return setup->min_keycode + key;
    return 0;
}

void X11Input::press(std::uint32_t keysym, std::uint32_t held) {
    if (held)
        fake(XCB_KEY_PRESS, keycode(held), 0, 0);
    for (const int change : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
        fake(change, keycode(keysym), 0, 0);
    if (held)
        fake(XCB_KEY_RELEASE, keycode(held), 0, 0);
}

void X11Input::moveTo(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void X11Input::hold(int button) {
    fake(XCB_BUTTON_PRESS, button, 0, 0);
}

void X11Input::letGo(int button) {
    fake(XCB_BUTTON_RELEASE, button, 0, 0);
}

void X11Input::click(int x, int y, int button) {
    moveTo(x, y);
    hold(button);
    letGo(button);
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

std::vector<std::uint32_t> X11Input::pixels(const Window& part) {
    const auto width = std::uint16_t(part.width), height = std::uint16_t(part.height);
    const auto cookie = xcb_get_image(m_Connection, XCB_IMAGE_FORMAT_Z_PIXMAP, part.id, std::int16_t(part.x),
                                      std::int16_t(part.y), width, height, ~0u);
    const auto image = owned(xcb_get_image_reply(m_Connection, cookie, nullptr));
    std::vector<std::uint32_t> result(std::size_t(width) * height);
    if (image)
        std::memcpy(result.data(), xcb_get_image_data(image.get()), result.size() * 4);
    for (std::uint32_t& pixel : result)
        pixel &= 0xffffff;
    return result;
}

} // namespace vx::test
