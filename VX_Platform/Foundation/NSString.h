// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <cstdarg>
#include <string>

class NSMutableArray;

/// Names of text encodings; UTF-8 is the only one served.
enum NSStringEncoding : unsigned { NSUTF8StringEncoding = 4 };

/// Immutable text, held as UTF-8. Results of the class functions are borrowed and autoreleased. Any thread.
class VX_EXPORT NSString : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSString)

    /// `bytes` end with a NUL and are copied. Returns their text; null for null, for another encoding than
    /// UTF-8 and for bytes that are not valid in it.
    static NSString* stringWithCString(const char* bytes, NSStringEncoding encoding);
    /// The same in UTF-8.
    static NSString* stringWithUTF8String(const char* bytes);
    /// `error` is not used and may be null. Returns the whole file's text, NUL bytes kept; null for a null
    /// path, another encoding than UTF-8, what is no regular file, and a file that cannot be read, is larger
    /// than a gigabyte or is not valid UTF-8. Nothing is logged.
    static NSString* stringWithContentsOfFile(NSString* path, NSStringEncoding encoding, void* error);
    /// `format` is one of `printf`, with "%@" for an `NSObject*` (its `description`, "(null)" for null); the
    /// compiler does not check it. Returns the text, which ends before a conversion that is not known ("%n",
    /// and positions such as "%1$d").
    static NSString* stringWithFormat(const char* format, ...);
    /// The same with the arguments of a function of the caller's own, who ends the list.
    static NSString* stringWithFormatArguments(const char* format, va_list arguments);

    /// Returns the object as an empty text.
    NSString* init() override;
    /// Sets the text of a fresh object, once. Returns the object; for null and for bytes that are not valid
    /// UTF-8 it releases the object and returns null.
    NSString* initWithUTF8String(const char* bytes);

    /// Returns the bytes with a NUL behind them; borrowed, valid as long as the text lives.
    const char* UTF8String() const { return m_Text.c_str(); }
    /// Returns the number of UTF-16 code units, as the platform counts: 2 for a character outside the basic
    /// plane.
    int length() const;
    /// Returns whether the other has the same bytes; false for null.
    bool isEqualToString(const NSString* other) const;
    /// The same for an object of any class; false for one that is no text.
    bool isEqual(const NSObject* other) const override;
    /// Returns the text itself as another, borrowed and autoreleased.
    NSString* description() const override;
    /// Returns a text with the same bytes, the caller's to release.
    NSString* copy() const;

    /// The text as a path, whose parts stand between slashes; slashes at its end count for nothing. Results
    /// are borrowed and autoreleased.
    /// Returns the last part: "b.png" for "a/b.png", "/" for "/", nothing for nothing.
    NSString* lastPathComponent() const;
    /// Returns what is before the last part: "a" for "a/b.png", "/" for "/b", nothing for "b".
    NSString* stringByDeletingLastPathComponent() const;
    /// Returns what is behind the last dot of the last part, without it; nothing for a part that has none, or
    /// begins with its only one.
    NSString* pathExtension() const;
    /// Returns the path without extension and dot.
    NSString* stringByDeletingPathExtension() const;
    /// Returns the pieces between places where `separator` stands, which may be empty, as texts; one piece
    /// where it stands nowhere, is empty or null. Borrowed, autoreleased.
    NSMutableArray* componentsSeparatedByString(const NSString* separator) const;

    /// Returns the bytes, NULs included; borrowed, valid as long as the text lives.
    const std::string& string() const { return m_Text; }

protected:
    ~NSString() override = default;

private:
    static NSString* make(std::string text);

    std::string m_Text;
};
