// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_FinalOutputManager.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

std::string sizeOf(const VX_FinalOutputManager& settings) {
    const CGSize size = settings.GetResolution();
    return std::to_string(int(size.width)) + " x " + std::to_string(int(size.height));
}

std::string stateOf(const VX_FinalOutputManager& settings) {
    const CGSize offset = settings.GetPositionOffset();
    const NSString* name = settings.GetTargetScreenName();
    return NSString::stringWithFormat("%d%d%d type %d, %s, screen %s, offset %.9g %.9g",
                                      settings.ShouldFitScreen(), settings.NoTitleBar(), settings.NoMenuBar(),
                                      settings.GetFinalDisplayType(), sizeOf(settings).c_str(),
                                      name ? name->UTF8String() : "none", offset.width, offset.height)
        ->string();
}

} // namespace

TEST(VX_FinalOutputManager, ReadsAndWritesResolutionsAsText) {
    auto settings = NSInit(new VX_FinalOutputManager);
    const struct {
        const char *text, *size, *asText;
    } rows[] = {{"Screen Fit", "640 x 480", "Screen Fit"}, {"1920 x 1080", "1920 x 1080", "1920 x 1080"},
                {"800x600", "800 x 600", "800 x 600"},     {"no number", "800 x 600", "800 x 600"},
                {"Screen Fit", "800 x 600", "Screen Fit"}, {"1024", "1024 x 600", "1024 x 600"},
                {"screen fit", "1024 x 600", "1024 x 600"}};
    for (const auto& row : rows) {
        settings->SetResolutionByString(NSString::stringWithUTF8String(row.text));
        EXPECT_EQ(sizeOf(*settings), row.size) << row.text;
        EXPECT_EQ(settings->ToString()->string(), row.asText) << row.text;
    }
    settings->SetResolution(CGSizeMake(800.9, -0.9));
    EXPECT_EQ(sizeOf(*settings), "800 x 0") << "toward zero";
    settings->SetResolution(CGSizeMake(1e20, std::nan("")));
    EXPECT_EQ(sizeOf(*settings), "2147483647 x 0") << "into range";
}

TEST(VX_FinalOutputManager, SavesAndLoadsNineKeysAndNothingElse) {
    auto store = NSInit(new NSMutableDictionary);
    store->setObject(NSNumber::numberWithInt(1), "Other");
    auto loaded = NSInit(new VX_FinalOutputManager), settings = NSInit(new VX_FinalOutputManager);
    for (const int flag : {0, 1, 2}) { // each flag alone
        settings->SetShouldFitScreen(flag == 0);
        settings->SetNoTitleBar(flag == 1);
        settings->SetNoMenuBar(flag == 2);
        settings->SetFinalDisplayType(7 + flag);
        settings->SetResolution(CGSizeMake(1280, 720));
        settings->SetTargetScreenName(NSString::stringWithUTF8String("Projector"));
        settings->SetPositionOffset(CGSizeMake(0.1, -3.5));
        settings->Save(store.get());
        EXPECT_EQ(store->count(), 10);
        loaded->Load(store.get());
        settings->SetPositionOffset(CGSizeMake(double(0.1f), -3.5)); // kept as 32-bit floats
        EXPECT_EQ(stateOf(*loaded), stateOf(*settings));
    }
    NSString* held = loaded->GetTargetScreenName();
    loaded->SetTargetScreenName(held); // its own
    EXPECT_EQ(stateOf(*loaded), "001 type 9, 1280 x 720, screen Projector, offset 0.100000001 -3.5");
    loaded->Load(NSInit(new NSMutableDictionary).get());
    EXPECT_EQ(stateOf(*loaded), "000 type 0, 0 x 0, screen none, offset 0 0") << "zero, not the defaults";
    loaded->Save(store.get());
    loaded->Load(store.get());
    EXPECT_EQ(loaded->GetTargetScreenName()->string(), "") << "no name comes back empty";
}
