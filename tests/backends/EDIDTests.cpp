// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/EDID.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

// A block whose descriptor of that number holds the tag and 13 bytes of text.
Bytes block(int descriptor, unsigned char tag, const char* text) {
    Bytes bytes = {0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0};
    bytes.resize(128, 1);
    unsigned char* const at = bytes.data() + 54 + descriptor * 18;
    const unsigned char head[] = {0, 0, 0, tag, 0};
    std::memcpy(at, head, sizeof head);
    std::memcpy(at + sizeof head, text, 13);
    return bytes;
}

Bytes cutTo(std::size_t size, Bytes bytes) {
    bytes.resize(size);
    return bytes;
}

} // namespace

TEST(EDID, NamesTheDisplayWhereItSaysSoInText) {
    const struct {
        Bytes edid;
        const char* name;
    } rows[] = {
        {block(0, 0xFC, "Beamer 4\n    "), "Beamer 4"},
        {block(3, 0xFC, "Thirteen char"), "Thirteen char"}, // no end mark
        {block(2, 0xFC, "Cut short  \nx"), "Cut short"},
        {cutTo(256, block(1, 0xFC, "Extended\n    ")), "Extended"},
        {block(1, 0xFF, "Serial 12345\n"), ""},
        {block(1, 0xFC,
               "Gr\xF6\xDF"
               "e\n       "),
         ""}, // no UTF-8
        {block(1, 0xFC, "Bell\a\n        "), ""},
        {block(1, 0xFC, "\n            "), ""},
        {cutTo(127, block(0, 0xFC, "Beamer 4\n    ")), ""},
        {Bytes(128, 0), ""},
        {Bytes(), ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(vx::nameInEDID(row.edid), row.name);
}
