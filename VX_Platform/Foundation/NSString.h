// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <cstdarg>
#include <string>

/// Names of text encodings; UTF-8 is the only one served.
enum NSStringEncoding : unsigned { NSUTF8StringEncoding = 4 };

/// Immutable text, held as UTF-8. Results of the class functions are borrowed and autoreleased.
class VX_EXPORT NSString : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSString)

    /// Text of a NUL-terminated byte string. Returns null when `bytes` is null, the encoding is not UTF-8 or
    /// the bytes are not valid in it.
    static NSString* stringWithCString(const char* bytes, NSStringEncoding encoding);
    /// The same with UTF-8.
    static NSString* stringWithUTF8String(const char* bytes);
    /// The whole file decoded as UTF-8; NUL bytes are kept. Null when the file cannot be read or is not
    /// valid.
    static NSString* stringWithContentsOfFile(NSString* path, NSStringEncoding encoding, void* error);
    /// Text by a format of `printf`, with "%@" for an `NSObject*` (its `description`, "(null)" for null).
    static NSString* stringWithFormat(const char* format, ...);
    static NSString* stringWithFormatArguments(const char* format, va_list arguments);

    NSString* init() override;
    /// Sets the text of a fresh object. Returns the object, or releases it and returns null as above.
    NSString* initWithUTF8String(const char* bytes);

    /// NUL-terminated bytes, owned by the text and valid as long as it lives.
    const char* UTF8String() const { return m_Text.c_str(); }
    /// Number of UTF-16 code units, as the platform counts.
    int length() const;
    bool isEqualToString(const NSString* other) const;
    bool isEqual(const NSObject* other) const override;
    NSString* description() const override;
    /// A text of the caller's own with the same characters.
    NSString* copy() const;

    const std::string& string() const { return m_Text; }

private:
    static NSString* make(std::string text);

    std::string m_Text;
};
