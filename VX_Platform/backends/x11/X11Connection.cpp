// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Connection.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>

namespace vx {

namespace {

::Display* ownDisplay = nullptr;
XErrorHandler formerHandler = nullptr;

// A window that went away under a view is no reason to end the process, which is what Xlib's own handler
// does. Errors of other connections go where they went before.
int logError(::Display* display, XErrorEvent* error) {
    if (display != ownDisplay)
        return formerHandler ? formerHandler(display, error) : 0;
    char text[128];
    XGetErrorText(display, error->error_code, text, sizeof text);
    NSLog("X11: %s (request %d.%d, resource 0x%lx)", text, error->request_code, error->minor_code,
          error->resourceid);
    return 0;
}

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

double overlap(const CGRect& a, const CGRect& b) {
    const double width =
        std::min(a.origin.x + a.size.width, b.origin.x + b.size.width) - std::max(a.origin.x, b.origin.x);
    const double height =
        std::min(a.origin.y + a.size.height, b.origin.y + b.size.height) - std::max(a.origin.y, b.origin.y);
    return std::max(width, 0.0) * std::max(height, 0.0);
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open() {
    XInitThreads();
    ::Display* display = XOpenDisplay(nullptr);
    return display ? std::unique_ptr<X11Connection>(new X11Connection(display)) : nullptr;
}

X11Connection::X11Connection(_XDisplay* display) : m_Display(display) {
    ownDisplay = display;
    formerHandler = XSetErrorHandler(logError);
}

X11Connection::~X11Connection() {
    XSync(m_Display, False);
    XSetErrorHandler(formerHandler);
    ownDisplay = nullptr;
    XCloseDisplay(m_Display);
}

std::vector<DisplayInfo> X11Connection::displays() const {
    std::vector<DisplayInfo> found;
    const Window root = DefaultRootWindow(m_Display);
    XRRScreenResources* resources = XRRGetScreenResourcesCurrent(m_Display, root);
    const RROutput primary = resources ? XRRGetOutputPrimary(m_Display, root) : 0;
    for (int i = 0; resources && i < resources->noutput; ++i) {
        XRROutputInfo* output = XRRGetOutputInfo(m_Display, resources, resources->outputs[i]);
        XRRCrtcInfo* crtc =
            output && output->crtc ? XRRGetCrtcInfo(m_Display, resources, output->crtc) : nullptr;
        if (crtc && crtc->mode) {
            DisplayInfo display;
            display.id = static_cast<std::uint32_t>(resources->outputs[i]);
            display.name.assign(output->name, output->nameLen);
            display.bounds = CGRectMake(crtc->x, crtc->y, crtc->width, crtc->height);
            display.refreshRate = refreshRate(resources, crtc->mode);
            found.insert(resources->outputs[i] == primary ? found.begin() : found.end(), display);
        }
        if (crtc)
            XRRFreeCrtcInfo(crtc);
        if (output)
            XRRFreeOutputInfo(output);
    }
    if (resources)
        XRRFreeScreenResources(resources);
    if (found.empty()) {
        const int screen = DefaultScreen(m_Display);
        found.push_back({0, "X screen",
                         CGRectMake(0, 0, DisplayWidth(m_Display, screen), DisplayHeight(m_Display, screen)),
                         60.0});
    }
    return found;
}

bool X11Connection::frameOf(unsigned long window, CGRect& frame) const {
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(m_Display, window, &attributes))
        return false;
    int x = 0, y = 0;
    Window child = 0;
    XTranslateCoordinates(m_Display, window, attributes.root, 0, 0, &x, &y, &child);
    frame = CGRectMake(x, y, attributes.width, attributes.height);
    return true;
}

DisplayInfo X11Connection::displayOf(unsigned long window) const {
    const std::vector<DisplayInfo> all = displays();
    CGRect frame;
    if (!frameOf(window, frame))
        return all.front();
    return *std::max_element(all.begin(), all.end(), [&](const DisplayInfo& a, const DisplayInfo& b) {
        return overlap(a.bounds, frame) < overlap(b.bounds, frame);
    });
}

} // namespace vx
