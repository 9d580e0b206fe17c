// SPDX-License-Identifier: MIT
#include <VX_System/private/NumberText.h>

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>

#include <locale.h>

namespace {

locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

int vx::intOfText(const std::string& text) {
    const char* at = text.c_str();
    while (isNumberSpace(*at))
        ++at;
    const bool negative = *at == '-';
    at += negative || *at == '+';
    constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
    const std::uint64_t limit = largest + negative;
    std::uint64_t magnitude = 0;
    for (; *at >= '0' && *at <= '9'; ++at) {
        const std::uint64_t digit = static_cast<std::uint64_t>(*at - '0');
        magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
    }
    return static_cast<int>(static_cast<std::uint32_t>(negative ? -magnitude : magnitude));
}

double vx::doubleOfText(const std::string& text) {
    const char* at = text.c_str();
    while (isNumberSpace(*at))
        ++at;
    const bool negative = *at == '-';
    const char* digits = at + (negative || *at == '+');
    const bool isDecimal = (*digits >= '0' && *digits <= '9') || *digits == '.';
    const bool isHexadecimal = digits[0] == '0' && (digits[1] | 0x20) == 'x';
    double value;
    if (isDecimal && !isHexadecimal) {
        const auto result = std::from_chars(digits, text.c_str() + text.size(), value);
        if (result.ec == std::errc())
            return negative ? -value : value;
    }
    // Hexadecimal, infinite, no number, out of range: rare, and the C library knows them all.
    return strtod_l(at, nullptr, cLocale());
}
