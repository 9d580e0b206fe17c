// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/LogCollector.h>

#include <gtest/gtest.h>

namespace {

NSString* text(const char* bytes) {
    return NSString::stringWithUTF8String(bytes);
}

} // namespace

TEST(NSAlert, HandsItsTextsToTheHostsPresenterOrToTheLogWhereNoWindowCanBeHad) {
    unsetenv("DISPLAY");
    const auto pool = NSInit(new NSAutoreleasePool);
    vx::test::LogCollector log;
    std::string shown;
    NSAlert::setPresenter([&](NSAlert* alert) {
        shown =
            NSString::stringWithFormat("%@|%@|%@|%@|%@", alert->messageText(), alert->informativeText(),
                                       alert->defaultButton(), alert->alternateButton(), alert->otherButton())
                ->string();
        NSAlert::setPresenter({}); // from inside a presenter: no lock is held
        return -1;
    });
    NSAlert* alert = NSAlert::alertWithMessageText(text("Can't load shader"), text("OK"), nullptr,
                                                   text("Later"), "%@ has %d\nlines", text("é"), 2);
    EXPECT_EQ(alert->runModal(), -1);
    EXPECT_EQ(shown, "Can't load shader|é has 2\nlines|OK|(null)|Later");
    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(alert->runModal(), 1);
    EXPECT_EQ(NSAlert::alertWithMessageText(nullptr, nullptr, text("No"), nullptr, nullptr)->runModal(), 1);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Can't load shader: é has 2 lines [OK]", " [OK]"}));
}
