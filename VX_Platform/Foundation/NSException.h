// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

#include <exception>

/// Names of exceptions: an argument that an operation cannot take, and an object that is not in the state
/// that it needs.
inline constexpr const char* NSInvalidArgumentException = "NSInvalidArgumentException";
inline constexpr const char* NSInternalInconsistencyException = "NSInternalInconsistencyException";

/// A failure that the caller of an operation may survive; thrown by value. What a hook of a frame throws ends
/// that frame alone, with a line in the log.
class VX_EXPORT NSException : public std::exception {
public:
    /// `name` and `reason` in UTF-8, copied.
    NSException(const char* name, const char* reason);
    ~NSException() override;
    /// A copy shares the two texts. Any thread.
    NSException(const NSException&) = default;
    /// The same.
    NSException& operator=(const NSException&) = default;

    /// Throws an exception of that name. `format` is one of `printf`, with "%@" for an `NSObject*`
    /// (`NSString::stringWithFormat`). Any thread.
    [[noreturn]] static void raise(const char* name, const char* format, ...);

    /// Return the two texts; borrowed, they live as long as the exception and its copies.
    NSString* name() const { return m_Name.get(); }
    NSString* reason() const { return m_Reason.get(); }
    /// Returns both as one line, "name: reason"; borrowed like them.
    const char* what() const noexcept override { return m_Line->UTF8String(); }

private:
    NSRef<NSString> m_Name;
    NSRef<NSString> m_Reason;
    NSRef<NSString> m_Line;
};
