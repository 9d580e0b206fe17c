// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Connection.h>

#include <VX_Platform/backends/x11/EDID.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <optional>

namespace vx {

namespace {

double refreshRate(const XRRScreenResources* resources, RRMode mode) {
    for (int i = 0; i < resources->nmode; ++i) {
        const XRRModeInfo& info = resources->modes[i];
        if (info.id != mode || info.hTotal == 0 || info.vTotal == 0)
            continue;
        const double rate = static_cast<double>(info.dotClock) / (double(info.hTotal) * info.vTotal);
        // Virtual servers give no clock, or one that means nothing.
        if (rate >= 10.0 && rate <= 1000.0)
            return rate;
    }
    return 60.0;
}

std::string ownName(::Display* connection, RROutput output) {
    constexpr long kMostWords = 32 * 1024 / 4; // 255 extension blocks
    Atom type = None;
    int bits = 0;
    unsigned long count = 0, left = 0;
    unsigned char* bytes = nullptr;
    const Atom edid = XInternAtom(connection, RR_PROPERTY_RANDR_EDID, False);
    XRRGetOutputProperty(connection, output, edid, 0, kMostWords, False, False, AnyPropertyType, &type, &bits,
                         &count, &left, &bytes);
    const std::string name = bits == 8 && bytes ? nameInEDID({bytes, count}) : std::string();
    if (bytes)
        XFree(bytes);
    return name;
}

// What an output shows now; nothing for one that is off.
std::optional<DisplayInfo> activeDisplay(::Display* connection, XRRScreenResources* resources, RROutput id) {
    std::optional<DisplayInfo> display;
    XRROutputInfo* output = XRRGetOutputInfo(connection, resources, id);
    XRRCrtcInfo* crtc =
        output && output->crtc ? XRRGetCrtcInfo(connection, resources, output->crtc) : nullptr;
    if (crtc && crtc->mode) {
        const std::string plug(output->name, output->nameLen), name = ownName(connection, id);
        display = DisplayInfo{displayIdOf(plug), plug, name.empty() ? plug : name,
                              CGRectMake(crtc->x, crtc->y, crtc->width, crtc->height),
                              refreshRate(resources, crtc->mode)};
    }
    if (crtc)
        XRRFreeCrtcInfo(crtc);
    if (output)
        XRRFreeOutputInfo(output);
    return display;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open() {
    XInitThreads();
    ::Display* display = XOpenDisplay(nullptr);
    return display ? std::unique_ptr<X11Connection>(new X11Connection(display)) : nullptr;
}

X11Connection::X11Connection(_XDisplay* display)
    : m_Display(display), m_Guard(std::make_unique<ConnectionGuard>(display)) {
    int events = 0, errors = 0;
    if (!XRRQueryExtension(display, &events, &errors))
        return;
    m_DisplayEvents = events;
    XRRSelectInput(display, DefaultRootWindow(display),
                   RRScreenChangeNotifyMask | RRCrtcChangeNotifyMask | RROutputChangeNotifyMask);
}

X11Connection::~X11Connection() {
    if (hasEnded())
        return;
    XSync(m_Display, False);
    m_Guard.reset();
    XCloseDisplay(m_Display);
}

std::vector<DisplayInfo> X11Connection::displays() const {
    std::vector<DisplayInfo> found;
    if (hasEnded() || m_DisplayEvents < 0)
        return found;
    // An output may go while it is asked.
    const ConnectionGuard::Quiet quiet(*m_Guard);
    const Window root = DefaultRootWindow(m_Display);
    XRRScreenResources* resources = XRRGetScreenResourcesCurrent(m_Display, root);
    const RROutput primary = resources ? XRRGetOutputPrimary(m_Display, root) : 0;
    for (int i = 0; resources && i < resources->noutput; ++i) {
        const std::optional<DisplayInfo> display = activeDisplay(m_Display, resources, resources->outputs[i]);
        if (display)
            found.insert(resources->outputs[i] == primary ? found.begin() : found.end(), *display);
    }
    if (resources)
        XRRFreeScreenResources(resources);
    return found;
}

bool X11Connection::frameOf(unsigned long window, CGRect& frame) const {
    XWindowAttributes attributes;
    if (hasEnded() || !XGetWindowAttributes(m_Display, window, &attributes))
        return false;
    int x = 0, y = 0;
    Window child = 0;
    XTranslateCoordinates(m_Display, window, attributes.root, 0, 0, &x, &y, &child);
    frame = CGRectMake(x, y, attributes.width, attributes.height);
    return true;
}

DisplayInfo X11Connection::displayOf(unsigned long window) const {
    CGRect frame;
    frameOf(window, frame);
    return displayShowing(displays(), frame);
}

bool X11Connection::takeEvents(const std::function<void(const XEvent&)>& ofWindow) {
    bool displaysChanged = false;
    while (!hasEnded() && XPending(m_Display) > 0) {
        XEvent event;
        XNextEvent(m_Display, &event);
        if (m_DisplayEvents >= 0 && (event.type == m_DisplayEvents + RRScreenChangeNotify ||
                                     event.type == m_DisplayEvents + RRNotify)) {
            XRRUpdateConfiguration(&event);
            displaysChanged = true;
        } else {
            ofWindow(event);
        }
    }
    return displaysChanged;
}

} // namespace vx
