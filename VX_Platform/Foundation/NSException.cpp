// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSException.h>

#include <VX_Platform/Foundation/private/TextFormat.h>

#include <cstdarg>
#include <string>

namespace {

NSRef<NSString> text(const char* bytes) {
    NSString* made = (new NSString)->initWithUTF8String(bytes);
    return made ? NSRef<NSString>::adopt(made)
                : NSInit(new NSString); // for null, and for bytes that are no text
}

} // namespace

NSException::NSException(const char* name, const char* reason)
    : m_Name(text(name)),
      m_Reason(text(reason)),
      m_Line(text((m_Name->string() + ": " + m_Reason->string()).c_str())) {}

NSException::~NSException() = default;

void NSException::raise(const char* name, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string reason = vx::formatText(format, arguments);
    va_end(arguments);
    throw NSException(name, reason.c_str());
}
