// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSString.h>

#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/private/RegularFile.h>
#include <VX_Platform/Foundation/private/TextFormat.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr std::uint64_t kLargestFile = 1 << 30;

// Length of the well-formed UTF-8 sequence at `p`, or 0. Overlong forms and surrogates are not well formed.
int sequenceLength(const unsigned char* p, const unsigned char* end) {
    const auto tail = [&](int i) { return p + i < end && (p[i] & 0xC0) == 0x80; };
    if (p[0] < 0x80)
        return 1;
    if (p[0] >= 0xC2 && p[0] <= 0xDF)
        return tail(1) ? 2 : 0;
    if ((p[0] & 0xF0) == 0xE0) {
        if (!tail(1) || !tail(2) || (p[0] == 0xE0 && p[1] < 0xA0) || (p[0] == 0xED && p[1] > 0x9F))
            return 0;
        return 3;
    }
    if (p[0] >= 0xF0 && p[0] <= 0xF4) {
        if (!tail(1) || !tail(2) || !tail(3) || (p[0] == 0xF0 && p[1] < 0x90) ||
            (p[0] == 0xF4 && p[1] > 0x8F))
            return 0;
        return 4;
    }
    return 0;
}

bool isValidUTF8(const std::string& text) {
    auto* p = reinterpret_cast<const unsigned char*>(text.data());
    auto* end = p + text.size();
    while (p < end) {
        const int length = sequenceLength(p, end);
        if (length == 0)
            return false;
        p += length;
    }
    return true;
}

// The path without the slashes at its end, but for the root's.
std::string_view trimmedPath(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

// Where the last part of a trimmed path begins.
std::size_t lastPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos || path == "/" ? 0 : slash + 1;
}

// Where the dot of a trimmed path's extension is, or its end.
std::size_t extensionDot(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    return dot == path.npos || dot <= lastPart(path) ? path.size() : dot;
}

} // namespace

NSString* NSString::make(std::string text) {
    auto* string = new NSString;
    string->m_Text = std::move(text);
    return string;
}

NSString* NSString::stringWithCString(const char* bytes, NSStringEncoding encoding) {
    return encoding == NSUTF8StringEncoding ? stringWithUTF8String(bytes) : nullptr;
}

NSString* NSString::stringWithUTF8String(const char* bytes) {
    if (!bytes)
        return nullptr;
    std::string text(bytes);
    return isValidUTF8(text) ? make(std::move(text))->autorelease() : nullptr;
}

NSString* NSString::stringWithContentsOfFile(NSString* path, NSStringEncoding encoding, void*) {
    if (!path || encoding != NSUTF8StringEncoding)
        return nullptr;
    std::uint64_t size = 0;
    std::string why;
    const vx::FileHandle file = vx::openRegularFile(path->string().c_str(), size, why);
    if (!file || size > kLargestFile)
        return nullptr;
    std::string text(static_cast<std::size_t>(size), '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) || !isValidUTF8(text))
        return nullptr;
    return make(std::move(text))->autorelease();
}

NSString* NSString::stringWithFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    NSString* result = stringWithFormatArguments(format, arguments);
    va_end(arguments);
    return result;
}

NSString* NSString::stringWithFormatArguments(const char* format, va_list arguments) {
    return make(vx::formatText(format, arguments))->autorelease();
}

NSString* NSString::init() {
    return this;
}

NSString* NSString::initWithUTF8String(const char* bytes) {
    if (bytes && isValidUTF8(bytes)) {
        m_Text = bytes;
        return this;
    }
    release();
    return nullptr;
}

int NSString::length() const {
    int units = 0;
    for (unsigned char byte : m_Text)
        units += (byte & 0xC0) == 0x80 ? 0 : byte >= 0xF0 ? 2 : 1;
    return units;
}

bool NSString::isEqualToString(const NSString* other) const {
    return other && m_Text == other->m_Text;
}

bool NSString::isEqual(const NSObject* other) const {
    return isEqualToString(dynamic_cast<const NSString*>(other));
}

NSString* NSString::description() const {
    return make(m_Text)->autorelease();
}

NSString* NSString::copy() const {
    return make(m_Text);
}

NSString* NSString::lastPathComponent() const {
    const std::string_view path = trimmedPath(m_Text);
    return make(std::string(path.substr(lastPart(path))))->autorelease();
}

NSString* NSString::stringByDeletingLastPathComponent() const {
    const std::string_view path = trimmedPath(m_Text);
    return make(std::string(trimmedPath(path == "/" ? path : path.substr(0, lastPart(path)))))->autorelease();
}

NSString* NSString::pathExtension() const {
    const std::string_view path = trimmedPath(m_Text);
    return make(std::string(path.substr(std::min(extensionDot(path) + 1, path.size()))))->autorelease();
}

NSString* NSString::stringByDeletingPathExtension() const {
    const std::string_view path = trimmedPath(m_Text);
    return make(std::string(path.substr(0, extensionDot(path))))->autorelease();
}

NSMutableArray* NSString::componentsSeparatedByString(const NSString* separator) const {
    auto* pieces = (new NSMutableArray)->init()->autorelease();
    const std::string between = separator ? separator->m_Text : "";
    std::size_t start = 0, end = std::string::npos;
    do {
        end = between.empty() ? std::string::npos : m_Text.find(between, start);
        pieces->addObject(make(m_Text.substr(start, end - start))->autorelease());
        start = end + between.size();
    } while (end != std::string::npos);
    return pieces;
}
