// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11AlertWindow.h>

#include <VX_Platform/drawing/AlertPainter.h>
#include <VX_Platform/drawing/Canvas.h>

#include <cairo/cairo-xcb.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

// XCB and not Xlib: its errors belong to the connection and never end the process, and it asks nothing of the
// threads that use other connections.

namespace vx {

namespace {

struct Free {
    void operator()(void* storage) const { std::free(storage); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

enum Key : xcb_keysym_t {
    KeySpace = 0x20,
    KeyTab = 0xff09,
    KeyReturn = 0xff0d,
    KeyEscape = 0xff1b,
    KeyLeft = 0xff51,
    KeyRight = 0xff53,
    KeyEnter = 0xff8d,
};

// The fixed-size part of WM_NORMAL_HINTS: flags, then pairs.
struct SizeHints {
    std::uint32_t flags = 1 << 2 | 1 << 4 | 1 << 5; // PPosition, PMinSize, PMaxSize
    std::int32_t x, y, width, height, minWidth, minHeight, maxWidth, maxHeight;
    std::int32_t unused[9] = {};
};

AlertTexts textsOf(const AlertContents& contents) {
    AlertTexts texts{contents.message, contents.informativeText, {}};
    for (const AlertButton& button : contents.buttons)
        texts.buttons.push_back(button.label);
    return texts;
}

class X11AlertWindow {
public:
    ~X11AlertWindow();
    bool open(const AlertContents& contents);
    /// Index of the button that ended the alert, -1 when the server went away.
    int run();

private:
    xcb_atom_t atom(const char* name);
    std::string rootText(xcb_atom_t property);
    double scale();
    bool hasWindowManager();
    void createWindow(const AlertContents& contents);
    void setProperties(const AlertContents& contents, int x, int y);
    void readKeyboard();
    Key keyOf(xcb_keycode_t code) const;
    void paint();
    /// True when the event ends the alert with `m_Focused`.
    bool handle(const xcb_generic_event_t* event);
    bool handleKey(Key key);

    xcb_connection_t* m_Connection = nullptr;
    xcb_screen_t* m_Screen = nullptr;
    xcb_window_t m_Window = 0;
    xcb_atom_t m_DeleteWindow = 0;
    cairo_surface_t* m_Surface = nullptr;
    std::unique_ptr<AlertPainter> m_Painter;
    Canvas m_Picture; // painted whole before it goes to the window, so that nothing flickers
    Reply<xcb_get_keyboard_mapping_reply_t> m_Keyboard;
    bool m_TakesFocus = false;
    int m_Focused = 0;
    int m_Pressed = -1;
};

X11AlertWindow::~X11AlertWindow() {
    if (m_Surface) {
        cairo_device_t* device = cairo_device_reference(cairo_surface_get_device(m_Surface));
        cairo_surface_finish(m_Surface);
        cairo_surface_destroy(m_Surface);
        cairo_device_finish(device); // lets go of the connection before it closes
        cairo_device_destroy(device);
    }
    xcb_disconnect(m_Connection);
}

bool X11AlertWindow::open(const AlertContents& contents) {
    int number = 0;
    m_Connection = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(m_Connection))
        return false;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(m_Connection));
    while (number-- > 0 && screens.rem > 1)
        xcb_screen_next(&screens);
    m_Screen = screens.data;
    m_Painter = std::make_unique<AlertPainter>(textsOf(contents), scale(), m_Screen->width_in_pixels,
                                               m_Screen->height_in_pixels * 8 / 10);
    m_Picture = Canvas(m_Painter->width(), m_Painter->height());
    m_TakesFocus = !hasWindowManager();
    readKeyboard();
    createWindow(contents);
    return xcb_connection_has_error(m_Connection) == 0 && m_Surface;
}

xcb_atom_t X11AlertWindow::atom(const char* name) {
    const auto cookie = xcb_intern_atom(m_Connection, 0, std::uint16_t(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_Connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

std::string X11AlertWindow::rootText(xcb_atom_t property) {
    const auto cookie = xcb_get_property(m_Connection, 0, m_Screen->root, property, XCB_ATOM_ANY, 0, 1 << 14);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_Connection, cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            std::size_t(xcb_get_property_value_length(reply.get()))};
}

// The desktop's own setting, as toolkits on X11 read it.
double X11AlertWindow::scale() {
    const std::string resources = "\n" + rootText(XCB_ATOM_RESOURCE_MANAGER);
    const char* key = "\nXft.dpi:";
    const std::size_t at = resources.find(key);
    const double dpi = at == std::string::npos ? 96 : std::atof(resources.c_str() + at + std::strlen(key));
    return std::clamp(dpi / 96, 1.0, 4.0);
}

bool X11AlertWindow::hasWindowManager() {
    return !rootText(atom("_NET_SUPPORTING_WM_CHECK")).empty();
}

void X11AlertWindow::createWindow(const AlertContents& contents) {
    const int width = m_Painter->width();
    const int height = m_Painter->height();
    const int x = std::max(0, (m_Screen->width_in_pixels - width) / 2);
    const int y = std::max(0, (m_Screen->height_in_pixels - height) / 2);
    m_Window = xcb_generate_id(m_Connection);
    const std::uint32_t values[] = {m_Screen->white_pixel,
                                    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_KEY_PRESS |
                                        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(m_Connection, XCB_COPY_FROM_PARENT, m_Window, m_Screen->root, std::int16_t(x),
                      std::int16_t(y), std::uint16_t(width), std::uint16_t(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, m_Screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    setProperties(contents, x, y);
    xcb_map_window(m_Connection, m_Window);

    for (auto depths = xcb_screen_allowed_depths_iterator(m_Screen); depths.rem; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem;
             xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == m_Screen->root_visual && !m_Surface)
                m_Surface = cairo_xcb_surface_create(m_Connection, m_Window, visuals.data, width, height);
        }
    }
    xcb_flush(m_Connection);
}

void X11AlertWindow::setProperties(const AlertContents& contents, int x, int y) {
    const auto set = [this](xcb_atom_t property, xcb_atom_t type, int format, std::size_t count,
                            const void* data) {
        xcb_change_property(m_Connection, XCB_PROP_MODE_REPLACE, m_Window, property, type,
                            std::uint8_t(format), std::uint32_t(count), data);
    };
    const std::string& title = contents.title;
    set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, title.size(), title.data());
    set(atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, title.size(), title.data());
    const std::string classNames = title + '\0' + title + '\0';
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, classNames.size(), classNames.data());

    m_DeleteWindow = atom("WM_DELETE_WINDOW");
    set(atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1, &m_DeleteWindow);
    const xcb_atom_t dialog = atom("_NET_WM_WINDOW_TYPE_DIALOG");
    set(atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &dialog);
    const xcb_atom_t above = atom("_NET_WM_STATE_ABOVE");
    set(atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, 1, &above);

    SizeHints hints;
    hints.x = x;
    hints.y = y;
    hints.width = hints.minWidth = hints.maxWidth = m_Painter->width();
    hints.height = hints.minHeight = hints.maxHeight = m_Painter->height();
    set(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, sizeof hints / 4, &hints);
}

void X11AlertWindow::readKeyboard() {
    const xcb_setup_t* setup = xcb_get_setup(m_Connection);
    const auto cookie = xcb_get_keyboard_mapping(m_Connection, setup->min_keycode,
                                                 std::uint8_t(setup->max_keycode - setup->min_keycode + 1));
    m_Keyboard.reset(xcb_get_keyboard_mapping_reply(m_Connection, cookie, nullptr));
}

Key X11AlertWindow::keyOf(xcb_keycode_t code) const {
    const int first = xcb_get_setup(m_Connection)->min_keycode;
    if (!m_Keyboard || code < first)
        return Key(0);
    const int at = (code - first) * m_Keyboard->keysyms_per_keycode;
    if (at >= xcb_get_keyboard_mapping_keysyms_length(m_Keyboard.get()))
        return Key(0);
    return Key(xcb_get_keyboard_mapping_keysyms(m_Keyboard.get())[at]);
}

void X11AlertWindow::paint() {
    m_Painter->paint(m_Picture, m_Focused, m_Pressed);
    m_Picture.copyTo(m_Surface);
    cairo_surface_flush(m_Surface);
    xcb_flush(m_Connection);
}

int X11AlertWindow::run() {
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(m_Connection)}) {
        if (handle(event.get()))
            return m_Focused;
    }
    return -1;
}

bool X11AlertWindow::handle(const xcb_generic_event_t* event) {
    switch (event->response_type & 0x7f) {
        case XCB_EXPOSE:
            if (m_TakesFocus) // nobody else would give it to us
                xcb_set_input_focus(m_Connection, XCB_INPUT_FOCUS_POINTER_ROOT, m_Window, XCB_CURRENT_TIME);
            m_TakesFocus = false;
            paint();
            return false;
        case XCB_KEY_PRESS:
            return handleKey(keyOf(reinterpret_cast<const xcb_key_press_event_t*>(event)->detail));
        case XCB_BUTTON_PRESS: {
            const auto* press = reinterpret_cast<const xcb_button_press_event_t*>(event);
            if (press->detail == 1)
                m_Pressed = m_Painter->buttonAt(press->event_x, press->event_y);
            paint();
            return false;
        }
        case XCB_BUTTON_RELEASE: {
            const auto* release = reinterpret_cast<const xcb_button_release_event_t*>(event);
            if (release->detail != 1 || m_Pressed < 0)
                return false;
            const int pressed = std::exchange(m_Pressed, -1);
            paint();
            if (m_Painter->buttonAt(release->event_x, release->event_y) != pressed)
                return false;
            m_Focused = pressed;
            return true;
        }
        case XCB_CLIENT_MESSAGE: {
            const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event);
            m_Focused = 0;
            return message->format == 32 && message->data.data32[0] == m_DeleteWindow;
        }
        case XCB_MAPPING_NOTIFY:
            readKeyboard();
            return false;
        default: // errors (0) arrive here too: none of them is a reason to stop
            return false;
    }
}

bool X11AlertWindow::handleKey(Key key) {
    const int count = m_Painter->buttonCount();
    switch (key) {
        case KeyReturn:
        case KeyEnter:
        case KeyEscape:
            m_Focused = 0;
            return true;
        case KeySpace:
            return true;
        case KeyTab:
        case KeyLeft: // the default button is the rightmost
            m_Focused = (m_Focused + 1) % count;
            break;
        case KeyRight:
            m_Focused = (m_Focused + count - 1) % count;
            break;
        default:
            return false;
    }
    paint();
    return false;
}

} // namespace

std::optional<int> runX11AlertWindow(const AlertContents& contents) {
    X11AlertWindow window;
    if (!window.open(contents))
        return std::nullopt;
    const int button = window.run();
    if (button < 0)
        return std::nullopt;
    return contents.buttons[std::size_t(button)].result;
}

} // namespace vx
