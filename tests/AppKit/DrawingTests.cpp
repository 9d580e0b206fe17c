// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/AppKit/NSGraphicsContext.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <tests/support/ImagePixels.h>

#include <cmath>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

using namespace vx::test;

namespace {

struct Drawing : testing::Test {
    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
};

NSRef<NSImage> drawn(NSSize size, bool flipped, const std::function<void()>& draw) {
    auto image = NSInit(new NSImage, size);
    image->lockFocusFlipped(flipped);
    draw();
    image->unlockFocus();
    return image;
}

PixelRows rowsOf(NSSize size, bool flipped, const std::function<void()>& draw) {
    return pixelsOf(drawn(size, flipped, draw).get());
}

void fill(NSColor* color, NSRect rect) {
    color->set();
    NSRectFill(rect);
}

NSFont* font(const char* name, double size) {
    return NSFont::fontWithName(name ? NSString::stringWithUTF8String(name) : nullptr, size);
}

NSRef<NSAttributedString> text(const char* words, double size, bool clips = false) {
    const auto attributes = NSInit(new NSMutableDictionary);
    const auto style = NSInit(new NSMutableParagraphStyle);
    style->setLineBreakMode(clips ? NSLineBreakByClipping : NSLineBreakByWordWrapping);
    attributes->setObject(font("DejaVu Sans", size), NSFontAttributeName);
    attributes->setObject(style.get(), NSParagraphStyleAttributeName);
    return NSInit(new NSAttributedString, NSString::stringWithUTF8String(words), attributes.get());
}

} // namespace

TEST_F(Drawing, GoesToThePixelsOfTheLockedImageTopRowFirst) {
    for (const bool flipped : {false, true}) {
        const PixelRows image = rowsOf({19, 4.5}, flipped, [] {
            for (int x = 0; x < 19; ++x)
                fill(NSColor::colorWithDeviceRed(x / 255.0, 0.4, 1.5, 1), CGRectMake(x + 0.4, 0.3, 1, 1));
            fill(NSColor::colorWithDeviceWhite(1, 0.2), CGRectMake(3, 0, 1, 1)); // in place of what is there
        });
        EXPECT_TRUE(image.width == 19 && image.height == 5);
        for (unsigned x = 0; x < 19; ++x) {
            EXPECT_EQ(image.at(int(x), flipped ? 0 : 4), x == 3 ? 0x33333333u : 0x0066ffffu + (x << 24)) << x;
            EXPECT_EQ(image.at(int(x), flipped ? 4 : 0), 0u) << x; // so is memory that was used before
        }
    }
}

TEST_F(Drawing, FollowsTheFocusOfItsThread) {
    const auto outer = NSInit(new NSImage, CGSizeMake(2, 1)), inner = NSInit(new NSImage, CGSizeMake(2, 1));
    const NSRect all = CGRectMake(0, 0, 2, 1);
    fill(NSColor::redColor(), all);
    text("x", 20)->drawAtPoint({});
    NSBezierPath::bezierPathWithOvalInRect(all)->fill();
    NSGraphicsContext::currentContext()->setShouldAntialias(false);
    inner->unlockFocus();
    EXPECT_FALSE(NSInit(new NSBitmapImageRep, all));

    outer->lockFocus();
    NSColor::greenColor()->set();
    inner->lockFocus();
    inner->lockFocus();
    std::thread([&] { NSRectFill(all); }).join();
    NSRectFill(CGRectMake(0, 0, 1, 1)); // black, as at first
    for (int i = 0; i < 3; ++i)
        inner->unlockFocus();
    NSRectFill(CGRectMake(1, 0, 1, 1));
    outer->unlockFocus();
    EXPECT_EQ(pixelsOf(inner.get()).pixels, (std::vector<unsigned>{0x000000ff, 0}));
    EXPECT_EQ(pixelsOf(outer.get()).pixels, (std::vector<unsigned>{0, 0x00ff00ff}));
    EXPECT_EQ(outer->retainCount(), 1);

    for (const double side : {0.0, -4.0, 40000.0, double(NAN)}) {
        const auto none = drawn({side, 4}, false, [&] { fill(NSColor::redColor(), all); });
        EXPECT_TRUE(pixelsOf(none.get()).pixels.empty());
        drawn({4, 4}, false, [&] { none->drawInRect(all, all, NSCompositeCopy, 1); });
    }
}

TEST_F(Drawing, StrokesHalfPixelsExactlyAndFillsOvals) {
    for (const bool smooth : {true, false}) {
        const PixelRows rows = rowsOf({8, 8}, true, [smooth] {
            NSGraphicsContext::currentContext()->setShouldAntialias(smooth);
            fill(NSColor::whiteColor(), CGRectMake(7, 0, 1, 1)); // which keeps what was set
            NSBezierPath* path = NSBezierPath::bezierPath();
            path->moveToPoint({2.5, 0.5});
            path->lineToPoint({2.5, 7.5});
            path->stroke();
            NSBezierPath::bezierPathWithOvalInRect(CGRectMake(4, 2, 4, 4))->fill();
            NSColor::colorWithDeviceWhite(0, 0.6)->set();
            NSBezierPath::bezierPathWithOvalInRect(CGRectMake(6, -1, 3, 3))->fill();
        });
        EXPECT_EQ(rows.at(7, 0), 0x666666ffu) << "over what is there";
        for (int y = 0; y < 8; ++y)
            EXPECT_TRUE(!smooth || rows.at(2, y) == (y % 7 ? ~0u : 0x80808080u)) << y;
        EXPECT_TRUE(rows.at(1, 4) == 0 && rows.at(3, 4) == 0 && rows.at(5, 3) == ~0u);
        EXPECT_EQ(rows.at(4, 2) != 0 && rows.at(4, 2) != ~0u, smooth);
    }
}

TEST_F(Drawing, TextStandsUprightAtItsCornerAndInItsRectangle) {
    const auto dots = text("\xC2\xA8", 40); // at the top of its line
    const double height = dots->size().height, line = text("x", 20)->size().height;
    EXPECT_NEAR(text("Measured", 80)->size().width, 2 * text("Measured", 40)->size().width, 4);
    for (const bool flipped : {false, true}) {
        const double y = flipped ? 20 : 80 - height;
        const auto box = rowsOf({60, 100}, flipped, [&] { dots->drawAtPoint({10, y}); }).inked();
        EXPECT_TRUE(box[2] > 20 && box[3] < 20 + height / 2 && box[0] > 10);
    }
    const char* const hebrew = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D";
    const struct Row {
        const char* words;
        bool clips;
        double lines, width;
    } rows[] = {
        {"one two", false, 2, 60}, {"one two", true, 1, 60}, {hebrew, false, 1, 75}, {hebrew, true, 1, 75}};
    for (const auto& row : rows)
        for (const bool flipped : {false, true}) {
            const auto draw = [&] {
                text(row.words, 20, row.clips)->drawInRect(CGRectMake(20, flipped ? 10 : 30, row.width, 60));
            };
            const auto box = rowsOf({100, 100}, flipped, draw).inked();
            EXPECT_TRUE(box[2] > 10 && box[2] < 10 + line && box[3] > 10 + line * (row.lines - 1) &&
                        box[3] < 10 + line * row.lines)
                << row.words << row.clips << flipped;
            EXPECT_TRUE(box[0] >= 20 && box[1] < 20 + row.width && (box[0] > 35) == (row.words == hebrew));
        }
}

TEST_F(Drawing, TextThatIsDrawnAgainIsTheSame) {
    const auto draw = [](double x) {
        return rowsOf({60, 30}, false,
                      [x] {
                          fill(NSColor::yellowColor(), CGRectMake(0, 0, 30, 30));
                          text("Aw\xC2\xA8", 20)->drawAtPoint({x, 3});
                      })
            .pixels;
    };
    const std::vector<unsigned> first = draw(4);
    EXPECT_TRUE(draw(4) == first && draw(4) == first && draw(4.5) != draw(4));
}

TEST_F(Drawing, FontsAreThoseThatAreThereAndNullTextsRaise) {
    for (int turn = 0; turn < 2; ++turn) { // asked for, and remembered
        EXPECT_EQ(font("No Such Family", 20), nullptr);
        ASSERT_NE(font("Arial Black", 20), nullptr);
    }
    EXPECT_EQ(font(nullptr, 20), nullptr);
    EXPECT_THROW(NSInit(new NSAttributedString, nullptr, nullptr), NSException);
    EXPECT_EQ(text("", 20)->size().height, 0);
    EXPECT_GT(NSInit(new NSAttributedString, NSString::stringWithUTF8String("x"), nullptr)->size().height,
              11);
}

TEST_F(Drawing, ImagesAreDrawnInPartsScaledAndUpright) {
    const auto source = drawn({4, 4}, false, [] {
        fill(NSColor::redColor(), CGRectMake(0, 0, 2, 2));
        fill(NSColor::blueColor(), CGRectMake(0, 2, 2, 2));
    });
    for (const bool flipped : {false, true}) {
        const PixelRows image = rowsOf({10, 10}, flipped, [&] {
            fill(NSColor::whiteColor(), CGRectMake(0, 0, 10, 10));
            const NSRect whole = CGRectMake(0, flipped ? 0 : 6, 4, 4),
                         part = CGRectMake(4, flipped ? 4 : 0, 6, 6);
            source->drawInRect(whole, CGRectMake(0, 0, 4, 4), NSCompositeSourceOver, 1);
            source->drawInRect(part, CGRectMake(0, 0, 2, 2), NSCompositeSourceOver, 0.6);
        });
        EXPECT_TRUE(image.at(1, 0) == 0x0000ffffu && image.at(1, 3) == 0xff0000ffu && image.at(3, 0) == ~0u);
        EXPECT_TRUE(image.at(4, 4) == 0xff6666ffu && image.at(9, 9) == 0xff6666ffu);
    }
}

TEST_F(Drawing, BitmapsTakeAHostsBytesOrNone) {
    const unsigned char bytes[] = {1, 2, 3, 4, 5, 6, 99, 99, 7, 8, 9, 10, 11, 12};
    const auto make = [&](int bits, int samples, bool planar, int stride) {
        const unsigned char* planes[] = {bytes};
        auto* made =
            (new NSBitmapImageRep)
                ->initWithBitmapDataPlanes(planes, 2, 2, bits, samples, false, planar, nullptr, stride, 0);
        return NSRef<NSBitmapImageRep>::adopt(made);
    };
    const auto bitmap = make(8, 3, false, 8);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(bitmap->bitmapData()[i], i + 1);
    EXPECT_FALSE(make(16, 3, false, 0) || make(8, 4, false, 0) || make(8, 3, true, 0) ||
                 make(8, 3, false, 5));
    auto* own =
        (new NSBitmapImageRep)->initWithBitmapDataPlanes(nullptr, 3, 1, 8, 4, true, false, nullptr, 0, 32);
    EXPECT_EQ(own->bitmapData()[11], 0);
    own->release();
}
