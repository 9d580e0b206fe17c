// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/private/TextFormat.h>

#include <VX_Platform/Foundation/NSString.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

template <class T>
void appendOne(std::string& text, const std::string& conversion, T value) {
    char small[128];
    const int length = std::snprintf(small, sizeof small, conversion.c_str(), value);
    if (length < 0)
        return;
    if (static_cast<std::size_t>(length) < sizeof small) {
        text.append(small, length);
        return;
    }
    const std::size_t start = text.size();
    text.resize(start + length + 1);
    std::snprintf(&text[start], length + 1, conversion.c_str(), value);
    text.resize(start + length);
}

// A va_list can only be handed on by reference inside a record.
struct Arguments {
    va_list list;
};

void appendInteger(std::string& text, std::string conversion, const std::string& modifier,
                   Arguments& arguments) {
    const char kind = conversion.back();
    conversion.resize(conversion.size() - 1 - modifier.size());
    conversion += 'j';
    conversion += kind;
    const bool isSigned = kind == 'd' || kind == 'i';
    std::intmax_t value = 0;
    if (modifier == "l")
        value = va_arg(arguments.list, long);
    else if (modifier == "ll" || modifier == "j")
        value = va_arg(arguments.list, long long);
    else if (modifier == "z" || modifier == "t")
        value = static_cast<std::intmax_t>(va_arg(arguments.list, std::size_t));
    else if (isSigned)
        value = va_arg(arguments.list, int);
    else
        value = va_arg(arguments.list, unsigned);
    appendOne(text, conversion, value);
}

void appendObject(std::string& text, NSObject* object) {
    text += object ? object->description()->UTF8String() : "(null)";
}

// Appends one conversion. Returns false for one that is not known.
bool appendConversion(std::string& text, const std::string& conversion, const std::string& modifier,
                      Arguments& arguments) {
    switch (conversion.back()) {
        case '%':
            text += '%';
            return true;
        case '@':
            appendObject(text, va_arg(arguments.list, NSObject*));
            return true;
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            appendInteger(text, conversion, modifier, arguments);
            return true;
        case 'c':
            appendOne(text, conversion, va_arg(arguments.list, int));
            return true;
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            if (modifier == "L")
                appendOne(text, conversion, va_arg(arguments.list, long double));
            else
                appendOne(text, conversion, va_arg(arguments.list, double));
            return true;
        case 's': {
            const char* bytes = va_arg(arguments.list, const char*);
            appendOne(text, conversion, bytes ? bytes : "(null)");
            return true;
        }
        case 'p':
            appendOne(text, conversion, va_arg(arguments.list, void*));
            return true;
        default:
            return false;
    }
}

// Reads flags, width and precision behind '%', with the value of each '*' put in.
const char* readFlags(const char* p, std::string& conversion, Arguments& arguments) {
    for (; *p && std::strchr("-+ #0123456789.*", *p); ++p) {
        if (*p == '*')
            conversion += std::to_string(va_arg(arguments.list, int));
        else
            conversion += *p;
    }
    return p;
}

} // namespace

std::string vx::formatText(const char* format, va_list list) {
    std::string text;
    Arguments arguments;
    va_copy(arguments.list, list);
    for (const char* p = format; *p;) {
        if (*p != '%') {
            const std::size_t plain = std::strcspn(p, "%");
            text.append(p, plain);
            p += plain;
            continue;
        }
        std::string conversion(1, '%');
        p = readFlags(p + 1, conversion, arguments);
        const std::size_t modifierLength = std::strspn(p, "hlLqjzt");
        const std::string modifier(p, modifierLength);
        conversion += modifier;
        p += modifierLength;
        if (!*p)
            break;
        conversion += *p++;
        if (!appendConversion(text, conversion, modifier, arguments))
            break;
    }
    va_end(arguments.list);
    return text;
}
