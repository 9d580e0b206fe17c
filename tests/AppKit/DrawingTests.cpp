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

using vx::test::ImagePixels;

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

ImagePixels pixelsOf(NSSize size, bool flipped, const std::function<void()>& draw) {
    return ImagePixels(drawn(size, flipped, draw).get());
}

void fill(NSColor* color, NSRect rect) {
    color->set();
    NSRectFill(rect);
}

NSRef<NSAttributedString> text(const char* words, double size, bool clips = false) {
    const auto attributes = NSInit(new NSMutableDictionary);
    const auto style = NSInit(new NSMutableParagraphStyle);
    style->setLineBreakMode(clips ? NSLineBreakByClipping : NSLineBreakByWordWrapping);
    attributes->setObject(NSFont::fontWithName(NSString::stringWithUTF8String("DejaVu Sans"), size),
                          NSFontAttributeName);
    attributes->setObject(style.get(), NSParagraphStyleAttributeName);
    return NSInit(new NSAttributedString, NSString::stringWithUTF8String(words), attributes.get());
}

} // namespace

TEST_F(Drawing, GoesToThePixelsOfTheLockedImageTopRowFirst) {
    for (const bool flipped : {false, true}) {
        const ImagePixels image = pixelsOf({19, 4.5}, flipped, [] {
            for (int x = 0; x < 19; ++x)
                fill(NSColor::colorWithDeviceRed(x / 255.0, 0.4, 1.5, 1), CGRectMake(x, 0, 1, 1));
            fill(NSColor::colorWithDeviceWhite(1, 0.2), CGRectMake(3, 0, 1, 1)); // in place of what is there
        });
        EXPECT_TRUE(image.width == 19 && image.height == 5);
        for (int x = 0; x < 19; ++x) {
            EXPECT_EQ(image.at(x, flipped ? 0 : 4), x == 3 ? 0x33333333u : 0x0066ffffu + (unsigned(x) << 24))
                << x;
            EXPECT_EQ(image.at(x, flipped ? 4 : 0), 0u) << x;
        }
    }
    EXPECT_EQ(ImagePixels(NSInit(new NSImage, CGSizeMake(19, 4.5)).get()).inked().second, 0) << "not clear";
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
    inner->unlockFocus();
    inner->unlockFocus();
    inner->unlockFocus();
    NSRectFill(CGRectMake(1, 0, 1, 1));
    outer->unlockFocus();
    EXPECT_EQ(ImagePixels(inner.get()).pixels, (std::vector<unsigned>{0x000000ff, 0}));
    EXPECT_EQ(ImagePixels(outer.get()).pixels, (std::vector<unsigned>{0, 0x00ff00ff}));
    EXPECT_EQ(outer->retainCount(), 1);

    for (const double side : {0.0, -4.0, 40000.0, double(NAN)}) {
        const auto none = drawn({side, 4}, false, [&] { fill(NSColor::redColor(), all); });
        EXPECT_TRUE(ImagePixels(none.get()).pixels.empty());
        drawn({4, 4}, false, [&] { none->drawInRect(all, all, NSCompositeCopy, 1); });
    }
}

TEST_F(Drawing, StrokesHalfPixelsExactlyAndFillsOvals) {
    const auto line = [](bool smooth) {
        return pixelsOf({8, 8}, true, [smooth] {
            NSGraphicsContext::currentContext()->setShouldAntialias(smooth);
            NSColor::whiteColor()->set();
            NSBezierPath* path = NSBezierPath::bezierPath();
            path->moveToPoint({2.5, 0.5});
            path->lineToPoint({2.5, 7.5});
            path->stroke();
            NSBezierPath::bezierPathWithOvalInRect(CGRectMake(4, 2, 4, 4))->fill();
        });
    };
    const ImagePixels smooth = line(true), hard = line(false);
    for (int y = 0; y < 8; ++y)
        EXPECT_TRUE(smooth.at(2, y) == (y % 7 ? ~0u : 0x80808080u) && !smooth.at(1, y) && !smooth.at(3, y))
            << y;
    EXPECT_TRUE(smooth.at(5, 3) == ~0u && smooth.at(4, 2) != 0 && smooth.at(4, 2) != ~0u);
    EXPECT_TRUE(hard.at(4, 2) == 0 || hard.at(4, 2) == ~0u);

    NSBezierPath::setDefaultLineWidth(3);
    EXPECT_EQ(NSBezierPath::bezierPath()->lineWidth(), 3);
    NSBezierPath::setDefaultLineWidth(1);
}

TEST_F(Drawing, TextStandsUprightAtItsCornerAndInItsRectangle) {
    const auto dots = text("\xC2\xA8", 40); // at the top of its line
    const NSSize box = dots->size();
    EXPECT_NEAR(text("Measured", 80)->size().width, 2 * text("Measured", 40)->size().width, 4);
    const ImagePixels up = pixelsOf({60, 100}, false, [&] {
        dots->drawAtPoint({10, 100 - 20 - box.height});
    });
    EXPECT_TRUE(up == pixelsOf({60, 100}, true, [&] { dots->drawAtPoint({10, 20}); }));
    EXPECT_TRUE(up.inked().first > 20 && up.inked().second < 20 + box.height / 2);

    const double line = text("x", 20)->size().height;
    struct Row {
        const char* words;
        bool clips;
        double lines;
        bool atRight;
    };
    const char* const hebrew = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D";
    for (const Row& row : {Row{"one two", false, 2, false},
                           {"one two", true, 1, false},
                           {hebrew, false, 1, true},
                           {hebrew, true, 1, true}})
        for (const bool flipped : {false, true}) {
            const ImagePixels image = pixelsOf({100, 100}, flipped, [&] {
                text(row.words, 20, row.clips)
                    ->drawInRect(CGRectMake(20, flipped ? 10 : 30, row.atRight ? 75 : 60, 60));
            });
            const auto rows = image.inked(), columns = image.inked(false);
            EXPECT_TRUE(rows.first > 10 && rows.first < 10 + line &&
                        rows.second > 10 + line * (row.lines - 1) && rows.second <= 10 + line * row.lines)
                << row.words << row.clips << flipped << rows.first << " " << rows.second;
            EXPECT_TRUE(columns.first >= 20 && columns.second <= 95 && (columns.first > 35) == row.atRight);
        }
    const ImagePixels cut = pixelsOf({100, 100}, true, [&] {
        text("wwwwwwwww", 40, true)->drawInRect({{20, 10}, {40, 30}});
    });
    EXPECT_TRUE(cut.inked(false).first >= 20 && cut.inked(false).second == 60);
}

TEST_F(Drawing, FontsAreThoseThatAreThereAndNullTextsRaise) {
    const auto font = [](const char* name, double size) {
        return NSFont::fontWithName(name ? NSString::stringWithUTF8String(name) : nullptr, size);
    };
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(font("No Such Family", 20), nullptr);
        ASSERT_NE(font("Arial Black", 20), nullptr);
        EXPECT_EQ(font("Arial Black", 20)->fontName()->string(), "Arial Black");
    }
    EXPECT_EQ(font(nullptr, 20), nullptr);
    EXPECT_EQ(font("Sans", 0)->pointSize(), 12);
    EXPECT_THROW(NSInit(new NSAttributedString, nullptr, nullptr), NSException);
    EXPECT_EQ(text("", 20)->size().height, 0);
    const auto plain = NSInit(new NSAttributedString, NSString::stringWithUTF8String("x"), nullptr);
    EXPECT_GT(plain->size().height, 11);
}

TEST_F(Drawing, ImagesAreDrawnInPartsScaledAndUpright) {
    const auto source = drawn({4, 4}, false, [] {
        fill(NSColor::redColor(), CGRectMake(0, 0, 2, 2));
        fill(NSColor::blueColor(), CGRectMake(0, 2, 2, 2));
    });
    for (const bool flipped : {false, true}) {
        const ImagePixels image = pixelsOf({10, 10}, flipped, [&] {
            fill(NSColor::whiteColor(), CGRectMake(0, 0, 10, 10));
            source->drawInRect(CGRectMake(0, flipped ? 0 : 6, 4, 4), CGRectMake(0, 0, 4, 4),
                               NSCompositeSourceOver, 1);
            source->drawInRect(CGRectMake(4, flipped ? 4 : 0, 6, 6), CGRectMake(0, 0, 2, 2),
                               NSCompositeSourceOver, 0.6);
        });
        EXPECT_EQ(image.at(1, 0), 0x0000ffffu);
        EXPECT_EQ(image.at(1, 3), 0xff0000ffu);
        EXPECT_EQ(image.at(3, 0), ~0u) << "clear lies over it";
        for (const auto& [x, y] : {std::pair(4, 4), {9, 9}})
            EXPECT_EQ(image.at(x, y), 0xff6666ffu);
    }
}

TEST_F(Drawing, BitmapsTakeAHostsBytesOrNone) {
    const unsigned char bytes[] = {1, 2, 3, 4, 5, 6, 99, 99, 7, 8, 9, 10, 11, 12};
    const auto make = [&](int bits, int samples, bool alpha, bool planar, int stride,
                          const unsigned char* rows) {
        const unsigned char* planes[] = {rows};
        auto* made =
            (new NSBitmapImageRep)
                ->initWithBitmapDataPlanes(planes, 2, 2, bits, samples, alpha, planar, nullptr, stride, 0);
        return NSRef<NSBitmapImageRep>::adopt(made);
    };
    const auto bitmap = make(8, 3, false, false, 8, bytes);
    ASSERT_TRUE(bitmap && !bitmap->hasAlpha() && bitmap->pixelsWide() == 2 && bitmap->pixelsHigh() == 2);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(bitmap->bitmapData()[i], i + 1);
    EXPECT_FALSE(make(16, 3, false, false, 0, bytes) || make(8, 4, false, false, 0, bytes) ||
                 make(8, 3, false, true, 0, bytes) || make(8, 3, false, false, 5, bytes) ||
                 make(8, 3, false, false, 0, nullptr));
    auto* own =
        (new NSBitmapImageRep)->initWithBitmapDataPlanes(nullptr, 3, 1, 8, 4, true, false, nullptr, 0, 32);
    ASSERT_TRUE(own);
    EXPECT_TRUE(own->hasAlpha() && own->bitmapData()[11] == 0);
    own->release();
}
