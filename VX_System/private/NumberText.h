// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace vx {

/// The value that `atoi` gives: the digits saturate at 64 bits and are then cut to 32.
int intOfText(const std::string& text);

/// The value that `atof` gives in the C locale, whatever the locale of the process is.
double doubleOfText(const std::string& text);

/// What `atoi` and `atof` skip in front of a number.
inline bool isNumberSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool isDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

/// Reads white space and a sign; true for a minus.
[[gnu::always_inline]] inline bool scanSign(const char*& text) {
    if (isDigit(*text))
        return false;
    while (isNumberSpace(*text))
        ++text;
    const bool negative = *text == '-';
    text += negative || *text == '+';
    return negative;
}

/// Reads digits one by one into `value`, behind those that are there.
template <class Value>
[[gnu::always_inline]] inline int scanEachDigit(const char*& text, Value& value) {
    const char* first = text;
    for (; isDigit(*text); ++text)
        value = value * 10 + static_cast<Value>(*text - '0');
    return static_cast<int>(text - first);
}

/// The number of the first `count` of eight digits, each 0 to 9 in a byte, the first one lowest.
template <int count>
[[gnu::always_inline]] inline std::uint32_t valueOfDigits(std::uint64_t digits) {
    digits <<= 8 * (8 - count); // zeros in front of them; then pairs, fours and all eight are summed up
    digits = digits * 10 + (digits >> 8);
    return static_cast<std::uint32_t>(((digits & 0x000000ff000000ffu) * 0x000f424000000064u +
                                       ((digits >> 16) & 0x000000ff000000ffu) * 0x0000271000000001u) >>
                                      32);
}

constexpr std::uint32_t kPowersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

template <int count, class Value>
[[gnu::always_inline]] inline int takeDigits(const char*& text, std::uint64_t digits, Value& value) {
    value = value * kPowersOfTen[count] + valueOfDigits<count>(digits);
    text += count;
    return count;
}

/// Reads digits into `value`, behind those that are there, and returns how many; more than 19 of them make it
/// worthless. Looks at eight bytes from `text` on, and further only behind eight digits. A branch for each
/// length, and not one piece of arithmetic for all of them, lets the processor guess where the next number
/// begins.
template <class Value>
[[gnu::always_inline]] inline int scanDigits(const char*& text, Value& value) {
    if constexpr (std::endian::native != std::endian::little)
        return scanEachDigit(text, value);
    std::uint64_t bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    // A digit becomes its value; whatever is more has a bit in the line after.
    bytes ^= 0x3030303030303030u;
    const std::uint64_t others = (bytes | (bytes + 0x7676767676767676u)) & 0x8080808080808080u;
    switch (others ? std::countr_zero(others) / 8 : 8) {
        case 0:
            return 0;
        case 1:
            return takeDigits<1>(text, bytes, value);
        case 2:
            return takeDigits<2>(text, bytes, value);
        case 3:
            return takeDigits<3>(text, bytes, value);
        case 4:
            return takeDigits<4>(text, bytes, value);
        case 5:
            return takeDigits<5>(text, bytes, value);
        case 6:
            return takeDigits<6>(text, bytes, value);
        case 7:
            return takeDigits<7>(text, bytes, value);
        default:
            takeDigits<8>(text, bytes, value);
            return 8 + scanEachDigit(text, value);
    }
}

constexpr double kExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestExactPower = 22;

/// Reads white space, a sign and at most nine digits from `text` on, which ends with a NUL that has eight
/// readable bytes behind it. Returns the address behind the number; null for one that needs a closer look.
[[gnu::always_inline]] inline const char* scanInt(const char* text, int& value) {
    const bool negative = scanSign(text);
    std::uint32_t magnitude = 0;
    if (scanDigits(text, magnitude) > 9)
        return nullptr;
    value = static_cast<int>(negative ? -magnitude : magnitude);
    return text;
}

/// Reads "e" and up to seven digits, if they stand there, and adds them to `exponent`.
[[gnu::always_inline]] inline const char* scanExponent(const char* text, int& exponent) {
    if ((*text | 0x20) != 'e')
        return text;
    int value;
    const char* end = isNumberSpace(text[1]) ? nullptr : scanInt(text + 1, value);
    if (!end || end[-1] < '0' || end[-1] > '9')
        return nullptr;
    exponent += value;
    return end;
}

/// The quotient or product of two doubles that are exact, which is correctly rounded; false where they are
/// not.
inline bool scale(std::uint64_t mantissa, int digits, int exponent, double& value) {
    if (digits == 0 || digits > 19 || mantissa > (std::uint64_t{1} << 53) || exponent < -kLargestExactPower ||
        exponent > kLargestExactPower)
        return false;
    const auto whole = static_cast<double>(static_cast<std::int64_t>(mantissa));
    value = exponent < 0 ? whole / kExactPowersOfTen[-exponent] : whole * kExactPowersOfTen[exponent];
    return true;
}

/// Reads white space and a decimal number, likewise.
[[gnu::always_inline]] inline const char* scanDouble(const char* text, double& value) {
    const bool negative = scanSign(text);
    std::uint64_t mantissa = 0;
    int digits = scanDigits(text, mantissa);
    int fraction = 0;
    if (*text == '.') {
        fraction = scanDigits(++text, mantissa);
        digits += fraction;
    }
    constexpr int alwaysExact = 15;
    if (digits > 0 && digits <= alwaysExact && (*text | 0x20) != 'e') {
        value = static_cast<double>(static_cast<std::int64_t>(mantissa)) / kExactPowersOfTen[fraction];
    } else {
        int exponent = -fraction;
        text = scanExponent(text, exponent);
        if (!text || !scale(mantissa, digits, exponent, value))
            return nullptr;
    }
    value = negative ? -value : value;
    return text;
}

} // namespace vx
