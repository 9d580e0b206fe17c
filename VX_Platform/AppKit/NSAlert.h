// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSString.h>

#include <functional>

/// A message that waits for the user: a window of its own on X11, a line in the log where nobody can press a
/// button.
class VX_EXPORT NSAlert : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSAlert)

    /// Texts are copied and may be null: a default button without one is called "OK", another one without is
    /// left out. The informative text is formatted as by `NSString::stringWithFormat`. Returns an alert;
    /// borrowed, autoreleased. Any thread.
    static NSAlert* alertWithMessageText(NSString* message, NSString* defaultButton,
                                         NSString* alternateButton, NSString* otherButton,
                                         const char* informativeTextWithFormat, ...);

    /// Shows the alert and blocks the calling thread, and no other, until a button is pressed. Returns 1 for
    /// the default button, 0 for the alternate, -1 for the other; closing the window, Return and Escape count
    /// as the default button. Any thread; no GL. Headless, and where no window can be opened, it logs
    /// message, text and default button in one line and returns 1 at once.
    int runModal();

    /// Return the texts as given, borrowed, or null. For a presenter.
    NSString* messageText() const { return m_Message.get(); }
    NSString* informativeText() const { return m_InformativeText.get(); }
    NSString* defaultButton() const { return m_DefaultButton.get(); }
    NSString* alternateButton() const { return m_AlternateButton.get(); }
    NSString* otherButton() const { return m_OtherButton.get(); }

    /// Shows an alert, borrowed for the call, in the place of the platform's window. Returns what `runModal`
    /// is to return. Called on the thread that runs the alert, and on several at a time if these do.
    using Presenter = std::function<int(NSAlert*)>;
    /// Puts `presenter` in place for the whole process; an empty one brings the platform's back. An alert
    /// that is on its way keeps the former one. Any thread, from a presenter too.
    static void setPresenter(Presenter presenter);

protected:
    ~NSAlert() override = default;

private:
    NSRef<NSString> m_Message;
    NSRef<NSString> m_InformativeText;
    NSRef<NSString> m_DefaultButton;
    NSRef<NSString> m_AlternateButton;
    NSRef<NSString> m_OtherButton;
};
