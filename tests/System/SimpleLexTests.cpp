// SPDX-License-Identifier: MIT
#include <VX_System/VX_SystemSimpleLex.h>
#include <VX_System/private/LexCursor.h>
#include <tests/support/CommaLocale.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using vx::test::TemporaryFile;

namespace {

class Lexing : public TemporaryFile {
public:
    explicit Lexing(std::string_view bytes) : TemporaryFile(bytes), lexer(std::fopen(path(), "r")) {}

    std::string rest() {
        std::string characters;
        for (int c = lexer.get(); c != VX_SystemSimpleLex::endOfFile; c = lexer.get())
            characters += static_cast<char>(c);
        return characters;
    }
    std::string onlyToken() {
        constexpr int end = ';';
        std::string token = "old";
        lexer.getStringOnlyToken(token, 1, &end);
        return token;
    }
    std::string whiteToken() {
        constexpr int ends[] = {'{', ';'};
        std::string token = "old";
        lexer.getStringWhiteToken(token, 2, ends);
        return token;
    }

    VX_SystemSimpleLex lexer;
};

/// Texts that reach every way of reading a number, and what stands around them, between bars.
const std::string_view kNumbers =
    "| |0|-0|+0|-|+|.|-.|5|-17|+17| \t\r\n\v\f 12|12 13|- 5|+-5|--5|2147483647|2147483648|-2147483648"
    "|-2147483649|4294967296|4294967301|999999999|1234567890|9223372036854775807|9223372036854775808"
    "|-9223372036854775808|-9223372036854775809|18446744073709551617|99999999999999999999999"
    "|00000000000000000000000012|1.5|-.5|5.|.25|1.5.5|1e5|1E5|1e+5|1e-5|1e|1e+|1e 5|1.e3|.e3|e3|1e22|1e23"
    "|9007199254740991|9007199254740992|9007199254740993|9007199254740992e1|0.1|0.3|123456.789012"
    "|3.4028236e38|1e-45|7.0064923216240854e-46|1e400|-1e400|1e-400|4.9e-324|2.4703282292062327208e-324"
    "|1e99999999999|1e-99999999999|0.000000000000000000000000000000000000000001|1.7976931348623157e308"
    "|1.7976931348623159e308|0.1234567890123456789012345678901234567890|123456789012345678901234567890.5"
    "|0x1p3|0x1.8P-2|0X.8|0x|0xg|inf|-INFINITY|infinit|nan|-nan|nan(12)|NaN(|1,5|1d5|1f|abc|\xff|1\xc3"
    "|12abc|\2405";

struct Number {
    explicit Number(std::string_view from)
        : text(from), integer(std::atoi(text.c_str())), real(std::atof(text.c_str())) {}
    std::string text;
    int integer;
    double real;
};

std::vector<Number> numbers() {
    std::vector<Number> texts;
    for (std::size_t at = 0; at < kNumbers.size(); at += texts.back().text.size() + 1)
        texts.emplace_back(kNumbers.substr(at, kNumbers.find('|', at) - at));
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        char text[64];
        const double uniform = std::uniform_real_distribution<double>(-1000, 1000)(random);
        const double any = std::bit_cast<double>(random());
        constexpr const char* formats[] = {"%.6f", "%.9g", "%.17g", "%.3e", "%.20f", "%.0f", "%a", "%f"};
        std::snprintf(text, sizeof text, formats[i % 8], i % 3 ? uniform : any);
        texts.emplace_back(text);
    }
    return texts;
}

/// All its bits; which of the many values that are no number is nobody's to tell.
std::uint64_t bitsOf(double value) {
    return std::bit_cast<std::uint64_t>(std::isnan(value) ? NAN : value);
}

/// The same file of numbers, each read by the lexer and by its cursor, at every offset from the block's end.
void expectNumbersOfTheCLocale(const std::vector<Number>& numbers) {
    std::string file;
    for (const Number& number : numbers)
        file += number.text + ';';
    Lexing first(file), second(file), third(file), fourth(file);
    vx::LexCursor cursorOfIntegers(third.lexer), cursorOfDoubles(fourth.lexer);
    for (const auto& [text, integer, real] : numbers) {
        ASSERT_EQ(first.lexer.getInt(';'), integer) << text;
        ASSERT_EQ(bitsOf(second.lexer.getDouble(';')), bitsOf(real)) << text;
        ASSERT_EQ(cursorOfIntegers.getInt<';'>(), integer) << text;
        ASSERT_EQ(bitsOf(cursorOfDoubles.getDouble<';'>()), bitsOf(real)) << text;
    }
    EXPECT_TRUE(cursorOfIntegers.isEOF() && cursorOfDoubles.isEOF());
}

} // namespace

TEST(VX_SystemSimpleLex, HandsReturnAndLineFeedOverAsOneLineEnd) {
    EXPECT_EQ(Lexing("a\r\nb\n\r\r\nc\r").rest(), "a\nb\n\r\nc\r");
    EXPECT_EQ(Lexing("\r\n").lexer.peek(), '\n');
    EXPECT_EQ(Lexing("\rx").lexer.peek(), '\r');
    EXPECT_EQ(Lexing("\xff").lexer.get(), 0xff);
    Lexing untouched("\r\nab\r\n\r\nc");
    char bytes[9] = {};
    EXPECT_EQ(untouched.lexer.read(7, bytes), 7);
    EXPECT_EQ(std::string(bytes), "\r\nab\r\n\r");
    EXPECT_EQ(untouched.rest(), "\nc") << "what read took is no part of a line end";
    EXPECT_EQ(Lexing("abc").lexer.read(9, bytes), 3);
    Lexing mixed("a\r\n\rbx");
    for (const char wanted : {'a', '\n', '\r', 'b'})
        EXPECT_EQ(vx::LexCursor(mixed.lexer).get(), wanted);
    EXPECT_EQ(mixed.rest(), "x");
}

TEST(VX_SystemSimpleLex, TokensEndAtTerminatorsBlanksOrTheEnd) {
    Lexing only("  a b\r\nc;;d");
    for (const char* token : {"  a b\nc", "", "d", ""})
        EXPECT_EQ(only.onlyToken(), token);
    Lexing white(" \r\t\n Mesh{x y;\rz");
    for (const char* token : {"Mesh", "", "x", "y", "", "z", ""}) {
        EXPECT_EQ(white.whiteToken(), token);
        if (!*token)
            white.lexer.get(); // the terminator stays unread
    }
    EXPECT_TRUE(only.lexer.isEOF() && white.lexer.isEOF());
    constexpr int braces[] = {'{', '}'};
    Lexing found("ab{c}\r\nd\re");
    found.lexer.find('{');
    EXPECT_EQ(found.lexer.peek(), 'c');
    EXPECT_EQ(found.lexer.findAny(2, braces), '}');
    found.lexer.find('\r');
    EXPECT_EQ(found.lexer.peek(), 'e') << "the return of a line end is not there to be found";
    found.lexer.find(VX_SystemSimpleLex::endOfFile);
    EXPECT_TRUE(found.lexer.isEOF());
    EXPECT_EQ(found.lexer.findAny(2, braces), VX_SystemSimpleLex::endOfFile);
}

TEST(VX_SystemSimpleLex, BlocksLeaveNoTraceInTheText) {
    // Line ends and tokens across the ends of the blocks, whatever their size.
    std::string file, text;
    for (int i = 0; i < 60000; ++i) {
        file += i % 3 ? "\r\n" : "token;";
        text += i % 3 ? "\n" : "token;";
    }
    for (int shift = 0; shift < 4; ++shift) {
        EXPECT_EQ(Lexing(std::string(shift, 'x') + file).rest(), std::string(shift, 'x') + text);
        Lexing tokens(std::string(shift, 'x') + file);
        EXPECT_EQ(tokens.onlyToken(), std::string(shift, 'x') + "token");
        for (int i = 1; i < 20000; ++i)
            ASSERT_EQ(tokens.onlyToken(), "\n\ntoken");
    }
    EXPECT_EQ(Lexing(std::string(300000, 'a') + ";").onlyToken().size(), 300000u);
}

TEST(VX_SystemSimpleLex, NumbersAreThoseOfTheCLocaleInAnyLocale) {
    const std::vector<Number> known = numbers();
    expectNumbersOfTheCLocale(known);
    const vx::test::CommaLocale locale;
    expectNumbersOfTheCLocale(known);
}

TEST(VX_SystemSimpleLex, FilesThatAreNone) {
    for (FILE* file : {static_cast<FILE*>(nullptr), std::fopen("/", "r"), std::fopen("/dev/null", "r")}) {
        VX_SystemSimpleLex lexer(file);
        lexer.skipWhiteSpace();
        lexer.find('x');
        EXPECT_TRUE(lexer.isEOF() && lexer.get() == lexer.endOfFile && lexer.peek() == lexer.endOfFile);
        EXPECT_EQ(lexer.getDouble(';'), 0.0);
    }
    Lexing sized("0123456789");
    sized.lexer.get();
    EXPECT_EQ(sized.lexer.bytesLeft(), 9u);
}
