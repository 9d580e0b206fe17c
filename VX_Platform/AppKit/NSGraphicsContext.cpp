// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSGraphicsContext.h>

#include <VX_Platform/AppKit/private/Focus.h>

NSGraphicsContext::~NSGraphicsContext() = default;

NSGraphicsContext* NSGraphicsContext::currentContext() {
    thread_local const auto ofThread = NSInit(new NSGraphicsContext);
    return ofThread.get();
}

void NSGraphicsContext::setShouldAntialias(bool antialias) {
    vx::focusedCanvas().setAntialias(antialias);
}
