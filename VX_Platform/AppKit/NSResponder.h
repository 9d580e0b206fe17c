// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <memory>

class NSEvent;

/// What can be told of key and mouse events. All of it on the main thread; no context is current unless the
/// host made one so.
class VX_EXPORT NSResponder : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSResponder)

    /// Hooks, one for each type of event; the event is borrowed for the call. An override that does not call
    /// its base keeps the event; the base hands it to the next responder: from view to parent view, and from
    /// the content view to the window.
    virtual void keyDown(NSEvent* event);
    virtual void keyUp(NSEvent* event);
    virtual void mouseDown(NSEvent* event);
    virtual void mouseUp(NSEvent* event);
    virtual void mouseDragged(NSEvent* event);
    virtual void mouseMoved(NSEvent* event);
    virtual void rightMouseDown(NSEvent* event);
    virtual void rightMouseUp(NSEvent* event);
    virtual void rightMouseDragged(NSEvent* event);
    virtual void otherMouseDown(NSEvent* event);
    virtual void otherMouseUp(NSEvent* event);
    virtual void otherMouseDragged(NSEvent* event);
    virtual void scrollWheel(NSEvent* event);

    /// Returns who is told next; borrowed, null at the end of the chain.
    virtual NSResponder* nextResponder() const { return nullptr; }

    /// Returns a handle that does not retain: empty once the object has ended.
    std::weak_ptr<NSResponder> weak();
    void dealloc() override;

    /// Calls the hook that belongs to the event's type; nothing for a type without one.
    void handle(NSEvent* event);

protected:
    ~NSResponder() override = default;

private:
    /// Owns nothing; made when first asked for.
    std::shared_ptr<NSResponder> m_Self;
};
