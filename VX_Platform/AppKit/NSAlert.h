// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>

/// A message that waits for the user: a window of its own on X11, a line in the log where nobody can press a
/// button.
class VX_EXPORT NSAlert : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSAlert)

    /// Borrowed, autoreleased. `alternateButton` and `otherButton` may be null; the informative text is
    /// formatted as by `NSString::stringWithFormat`.
    static NSAlert* alertWithMessageText(NSString* message, NSString* defaultButton,
                                         NSString* alternateButton, NSString* otherButton,
                                         const char* informativeTextWithFormat, ...);

    void dealloc() override;

    /// Shows the alert and blocks the calling thread, and no other, until a button is pressed. Any thread.
    /// Returns 1 for the default button, 0 for the alternate, -1 for the other. Closing the window or Escape
    /// counts as the default button. Headless it logs message, text and button and returns 1.
    int runModal();

    NSString* messageText() const { return m_Message; }
    NSString* informativeText() const { return m_InformativeText; }
    NSString* defaultButton() const { return m_DefaultButton; }
    NSString* alternateButton() const { return m_AlternateButton; }
    NSString* otherButton() const { return m_OtherButton; }

    /// Shows alerts in the place of the platform's window; returns what `runModal` is to return. Called on
    /// the thread that runs the alert.
    using Presenter = std::function<int(NSAlert*)>;
    /// Puts `presenter` in place for the whole process; an empty one brings the platform's back.
    static void setPresenter(Presenter presenter);

private:
    NSString* m_Message = nullptr;
    NSString* m_InformativeText = nullptr;
    NSString* m_DefaultButton = nullptr;
    NSString* m_AlternateButton = nullptr;
    NSString* m_OtherButton = nullptr;
};
