// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAlert.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>

#include <cerrno>
#include <cstdarg>
#include <mutex>
#include <utility>

namespace {

enum Result { DefaultReturn = 1, AlternateReturn = 0, OtherReturn = -1 };

struct PresenterSlot {
    std::mutex lock;
    NSAlert::Presenter presenter;
};

// Never destroyed: a thread may still run an alert while the process ends.
PresenterSlot& presenterSlot() {
    static PresenterSlot* slot = new PresenterSlot;
    return *slot;
}

NSRef<NSString> copyOrNull(const NSString* text) {
    return NSRef<NSString>::adopt(text ? text->copy() : nullptr);
}

std::string stringOr(const char* otherwise, const NSRef<NSString>& text) {
    return text ? text->string() : otherwise;
}

} // namespace

NSAlert* NSAlert::alertWithMessageText(NSString* message, NSString* defaultButton, NSString* alternateButton,
                                       NSString* otherButton, const char* informativeTextWithFormat, ...) {
    auto* alert = new NSAlert;
    alert->m_Message = copyOrNull(message);
    alert->m_DefaultButton = copyOrNull(defaultButton);
    alert->m_AlternateButton = copyOrNull(alternateButton);
    alert->m_OtherButton = copyOrNull(otherButton);
    if (informativeTextWithFormat) {
        va_list arguments;
        va_start(arguments, informativeTextWithFormat);
        alert->m_InformativeText =
            copyOrNull(NSString::stringWithFormatArguments(informativeTextWithFormat, arguments));
        va_end(arguments);
    }
    return alert->autorelease();
}

int NSAlert::runModal() {
    Presenter presenter;
    {
        PresenterSlot& slot = presenterSlot();
        std::lock_guard guard(slot.lock);
        presenter = slot.presenter;
    }
    if (presenter)
        return presenter(this);

    vx::AlertContents contents;
    contents.title = program_invocation_short_name;
    contents.message = stringOr("", m_Message);
    contents.informativeText = stringOr("", m_InformativeText);
    contents.buttons.push_back({stringOr("OK", m_DefaultButton), DefaultReturn});
    if (m_AlternateButton)
        contents.buttons.push_back({m_AlternateButton->string(), AlternateReturn});
    if (m_OtherButton)
        contents.buttons.push_back({m_OtherButton->string(), OtherReturn});
    return vx::presentAlert(contents);
}

void NSAlert::setPresenter(Presenter presenter) {
    PresenterSlot& slot = presenterSlot();
    std::lock_guard guard(slot.lock);
    slot.presenter.swap(presenter);
}
