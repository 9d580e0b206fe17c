// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_FinalOutputManager.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

NSRef<VX_FinalOutputManager> manager() {
    return NSRef<VX_FinalOutputManager>::adopt((new VX_FinalOutputManager)->init());
}

NSRef<NSMutableDictionary> dictionary() {
    return NSRef<NSMutableDictionary>::adopt((new NSMutableDictionary)->init());
}

NSString* text(const char* bytes) {
    return NSString::stringWithUTF8String(bytes);
}

void expectResolution(const VX_FinalOutputManager& settings, int width, int height, const char* what) {
    EXPECT_EQ(settings.GetResolution().width, width) << what;
    EXPECT_EQ(settings.GetResolution().height, height) << what;
}

} // namespace

TEST(VX_FinalOutputManager, ReadsAndWritesResolutionsAsText) {
    auto settings = manager();
    EXPECT_STREQ(settings->ToString()->UTF8String(), "640 x 480");
    struct Row {
        const char* text;
        int width, height;
        bool fit;
    };
    const Row rows[] = {{"Screen Fit", 640, 480, true}, {"1920 x 1080", 1920, 1080, false},
                        {"800x600", 800, 600, false},   {"no number", 800, 600, false},
                        {"1024", 1024, 600, false},     {"Screen Fit", 1024, 600, true}};
    for (const Row& row : rows) {
        settings->SetResolutionByString(text(row.text));
        EXPECT_EQ(settings->ShouldFitScreen(), row.fit) << row.text;
        expectResolution(*settings, row.width, row.height, row.text);
    }
    EXPECT_STREQ(settings->ToString()->UTF8String(), "Screen Fit");
    settings->SetResolutionByString(nullptr);
    EXPECT_STREQ(settings->ToString()->UTF8String(), "1024 x 600");
}

TEST(VX_FinalOutputManager, TruncatesResolutionsIntoRange) {
    auto settings = manager();
    settings->SetResolution(CGSizeMake(800.9, -0.9));
    expectResolution(*settings, 800, 0, "toward zero");
    settings->SetResolution(CGSizeMake(1e20, std::nan("")));
    expectResolution(*settings, std::numeric_limits<int>::max(), 0, "out of range");
}

TEST(VX_FinalOutputManager, SavesAndLoadsNineKeysAndNothingElse) {
    auto settings = manager();
    settings->SetNoTitleBar(true);
    settings->SetFinalDisplayType(7);
    settings->SetResolution(CGSizeMake(1280, 720));
    settings->SetTargetScreenName(text("Projector"));
    settings->SetPositionOffset(CGSizeMake(0.1, -3.5));
    auto store = dictionary();
    store->setObject(NSNumber::numberWithInt(1), "Other");
    settings->Save(store.get());
    EXPECT_EQ(store->count(), 10);

    auto loaded = manager();
    loaded->SetShouldFitScreen(true);
    loaded->Load(store.get());
    EXPECT_FALSE(loaded->ShouldFitScreen());
    EXPECT_TRUE(loaded->NoTitleBar());
    EXPECT_FALSE(loaded->NoMenuBar());
    EXPECT_EQ(loaded->GetFinalDisplayType(), 7);
    expectResolution(*loaded, 1280, 720, "loaded");
    EXPECT_STREQ(loaded->GetTargetScreenName()->UTF8String(), "Projector");
    EXPECT_EQ(loaded->GetPositionOffset().width, static_cast<double>(0.1f)) << "kept as a 32-bit float";
    EXPECT_EQ(loaded->GetPositionOffset().height, -3.5);
}

TEST(VX_FinalOutputManager, LoadsWhatIsMissingAsZero) {
    auto settings = manager();
    settings->SetTargetScreenName(text("Projector"));
    settings->Load(nullptr);
    expectResolution(*settings, 640, 480, "no dictionary changes nothing");
    auto store = dictionary();
    settings->Load(store.get());
    expectResolution(*settings, 0, 0, "not the defaults of a new manager");
    EXPECT_EQ(settings->GetTargetScreenName(), nullptr);

    settings->Save(store.get());
    store->setObject(text("not a number"), "Width");
    settings->Load(store.get());
    EXPECT_STREQ(settings->GetTargetScreenName()->UTF8String(), "")
        << "an absent name comes back as an empty one";
    expectResolution(*settings, 0, 0, "a text where a number belongs");
}

TEST(VX_FinalOutputManager, CopiesTheNameUnlessItIsItsOwn) {
    auto settings = manager();
    NSString* name = text("A");
    settings->SetTargetScreenName(name);
    NSString* held = settings->GetTargetScreenName();
    EXPECT_NE(held, name);
    settings->SetTargetScreenName(held);
    EXPECT_EQ(settings->GetTargetScreenName(), held);
    settings->SetTargetScreenName(nullptr);
    EXPECT_EQ(settings->GetTargetScreenName(), nullptr);
}
