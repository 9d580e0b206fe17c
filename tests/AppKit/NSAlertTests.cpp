// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/LogCollector.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

NSString* text(const char* bytes) {
    return NSString::stringWithUTF8String(bytes);
}

// Takes the log and the alerts for the length of a test.
class NSAlertTest : public testing::Test {
protected:
    NSAlertTest() { unsetenv("DISPLAY"); }
    ~NSAlertTest() override {
        NSAlert::setPresenter({});
        pool->release();
    }
    NSAutoreleasePool* pool = (new NSAutoreleasePool)->init();
    vx::test::LogCollector log;
};

} // namespace

TEST_F(NSAlertTest, HandsItsTextsToTheHostsPresenter) {
    std::string shown;
    NSAlert::setPresenter([&](NSAlert* alert) {
        shown =
            NSString::stringWithFormat("%@|%@|%@|%@|%@", alert->messageText(), alert->informativeText(),
                                       alert->defaultButton(), alert->alternateButton(), alert->otherButton())
                ->string();
        NSAlert::setPresenter({}); // from inside a presenter: no lock is held
        return -1;
    });
    NSAlert* alert = NSAlert::alertWithMessageText(text("Save?"), text("Yes"), nullptr, text("Later"),
                                                   "%@ has %d", text("é"), 2);
    EXPECT_EQ(alert->runModal(), -1);
    EXPECT_EQ(shown, "Save?|é has 2|Yes|(null)|Later");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(NSAlertTest, IsOneLineInTheLogWhereNoWindowCanBeHad) {
    EXPECT_EQ(NSAlert::alertWithMessageText(text("Can't load shader"), text("OK"), nullptr, nullptr, "%@",
                                            text("blur.fs\nblur.vs"))
                  ->runModal(),
              1);
    EXPECT_EQ(NSAlert::alertWithMessageText(nullptr, nullptr, text("No"), nullptr, nullptr)->runModal(), 1);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Can't load shader: blur.fs blur.vs [OK]", " [OK]"}));
}
