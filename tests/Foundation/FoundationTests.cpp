// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSNotificationQueue.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSRecursiveLock.h>
#include <VX_Platform/Foundation/NSString.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <thread>

namespace {

class Counted : public NSObject {
public:
    static inline int living = 0;
    Counted() { ++living; }
    ~Counted() override { --living; }
    int number;
};

class RetainedInTeardown : public Counted {
public:
    void dealloc() override {
        retain();
        release();
        Counted::dealloc();
    }
};

NSString* text(const char* bytes) {
    return NSString::stringWithUTF8String(bytes);
}

class ScopedPool {
public:
    ~ScopedPool() { m_Pool->release(); }

private:
    NSAutoreleasePool* m_Pool = (new NSAutoreleasePool)->init();
};

} // namespace

TEST(NSObject, LivesByItsCountAndStartsZeroFilled) {
    auto* object = new Counted;
    EXPECT_EQ(object->number, 0);
    object->retain();
    object->release();
    EXPECT_EQ(Counted::living, 1);
    {
        NSRef<Counted> first = NSRef<Counted>::adopt(object);
        NSRef<Counted> second = first;
        EXPECT_EQ(object->retainCount(), 2);
        first = nullptr;
        EXPECT_EQ(Counted::living, 1);
    }
    EXPECT_EQ(Counted::living, 0);
    (new RetainedInTeardown)->release();
    EXPECT_EQ(Counted::living, 0);
}

TEST(NSAutoreleasePool, EndsItsObjectsAndTheInnerPoolsWithIt) {
    auto* outer = (new NSAutoreleasePool)->init();
    (new Counted)->autorelease();
    (new NSAutoreleasePool)->init();
    (new Counted)->autorelease();
    EXPECT_EQ(Counted::living, 2);
    outer->release();
    EXPECT_EQ(Counted::living, 0);

    std::thread([] { (new Counted)->autorelease(); }).join();
    EXPECT_EQ(Counted::living, 0) << "a thread without a pool ends its objects with itself";
}

TEST(NSString, DecodesOnlyValidUTF8) {
    ScopedPool pool;
    const char* valid[] = {"", "plain", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8E\xA8"};
    for (const char* bytes : valid)
        EXPECT_STREQ(text(bytes)->UTF8String(), bytes);
    const char* broken[] = {"\xFF", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                            "a\x80"};
    for (const char* bytes : broken)
        EXPECT_EQ(text(bytes), nullptr) << bytes;
    EXPECT_EQ(text(nullptr), nullptr);
    EXPECT_EQ(text("\xF0\x9F\x8E\xA8\xC3\xA9")->length(), 3);
}

TEST(NSString, FormatsLikePrintfAndTakesObjects) {
    ScopedPool pool;
    EXPECT_STREQ(
        NSString::stringWithFormat("%@/%@_%d.%@", text("dir"), text("sky"), 3, text("png"))->UTF8String(),
        "dir/sky_3.png");
    EXPECT_STREQ(NSString::stringWithFormat("%5.2f|%-4d|%04x|%zu|%lld|%s|%c|100%%", 3.14159, -7, 255u,
                                            std::size_t(9), -1LL, "s", 'c')
                     ->UTF8String(),
                 " 3.14|-7  |00ff|9|-1|s|c|100%");
    EXPECT_STREQ(NSString::stringWithFormat("%*d %@ %s", 4, 7, nullptr, nullptr)->UTF8String(),
                 "   7 (null) (null)");
    const std::string big(5000, 'x');
    EXPECT_EQ(NSString::stringWithFormat("%s!", big.c_str())->string(), big + "!");
}

TEST(NSString, ReadsWholeFilesOrNothing) {
    ScopedPool pool;
    const auto path = std::filesystem::path(testing::TempDir()) / "nsstring_file.txt";
    const auto read = [&] {
        return NSString::stringWithContentsOfFile(text(path.c_str()), NSUTF8StringEncoding, nullptr);
    };
    std::ofstream(path) << "void main() {}\n";
    ASSERT_NE(read(), nullptr);
    EXPECT_STREQ(read()->UTF8String(), "void main() {}\n");
    std::ofstream(path, std::ios::binary) << "\xFE\xFF";
    EXPECT_EQ(read(), nullptr) << "not UTF-8";
    std::filesystem::remove(path);
    EXPECT_EQ(read(), nullptr) << "missing";
    EXPECT_EQ(
        NSString::stringWithContentsOfFile(text(testing::TempDir().c_str()), NSUTF8StringEncoding, nullptr),
        nullptr)
        << "a directory";
}

TEST(NSNumber, ConvertsWithinTheRangeOfTheResult) {
    ScopedPool pool;
    EXPECT_EQ(NSNumber::numberWithFloat(-3.9f)->intValue(), -3);
    EXPECT_EQ(NSNumber::numberWithDouble(1e300)->intValue(), std::numeric_limits<int>::max());
    EXPECT_EQ(NSNumber::numberWithDouble(std::numeric_limits<double>::quiet_NaN())->intValue(), 0);
    EXPECT_TRUE(NSNumber::numberWithBool(true)->boolValue());
    EXPECT_TRUE(NSNumber::numberWithInt(2)->isEqual(NSNumber::numberWithFloat(2.0f)));
}

TEST(NSMutableArray, RetainsItsObjects) {
    auto* array = (new NSMutableArray)->init();
    auto* object = new Counted;
    array->addObject(object);
    object->release();
    EXPECT_EQ(Counted::living, 1);
    EXPECT_TRUE(array->containsObject(object));
    array->removeObjectAtIndex(0);
    EXPECT_EQ(Counted::living, 0);
    array->release();
}

TEST(NSMutableArrayDeathTest, RefusesWhatWouldReachPastItsEnd) {
    auto* array = (new NSMutableArray)->init();
    NSRef<Counted> object = NSRef<Counted>::adopt(new Counted);
    array->addObject(object.get());
    const auto changeInWalk = [&] {
        for (NSObject* each : array->objects())
            array->addObject(each);
    };
    EXPECT_DEATH(changeInWalk(), "was changed while it was being walked");
    EXPECT_DEATH(array->objectAtIndex(1), "index 1 is outside a list of 1");
    EXPECT_DEATH(array->addObject(nullptr), "null");
    array->release();
}

TEST(NSMutableDictionary, ReplacesAndLooksUp) {
    ScopedPool pool;
    auto* dictionary = (new NSMutableDictionary)->init()->autorelease();
    dictionary->setObject(NSNumber::numberWithInt(1), "Width");
    dictionary->setObject(NSNumber::numberWithInt(2), text("Width"));
    EXPECT_EQ(dictionary->count(), 1);
    EXPECT_TRUE(dictionary->objectForKey("Width")->isEqual(NSNumber::numberWithInt(2)));
    EXPECT_EQ(dictionary->objectForKey("Height"), nullptr);
    dictionary->removeObjectForKey("Width");
    EXPECT_EQ(dictionary->count(), 0);
}

TEST(NSNotification, IsDeliveredByNameAndObjectAndOnlyAfterTheQueuePosts) {
    ScopedPool pool;
    auto* center = NSNotificationCenter::defaultCenter();
    NSRef<Counted> subject = NSRef<Counted>::adopt(new Counted);
    NSRef<Counted> other = NSRef<Counted>::adopt(new Counted);
    int named = 0, forOther = 0, all = 0;
    const auto counts = [](int& number) { return [&number](NSNotification*) { ++number; }; };
    center->addObserver(&named, counts(named), "Ready", subject.get());
    center->addObserver(&named, counts(forOther), "Ready", other.get());
    center->addObserver(&all, counts(all), nullptr, nullptr);

    auto* queue = NSNotificationQueue::defaultQueue();
    queue->enqueueNotification(NSNotification::notificationWithName("Ready", subject.get()), NSPostASAP);
    queue->enqueueNotification(NSNotification::notificationWithName("Other", subject.get()), NSPostASAP);
    EXPECT_EQ(named + all, 0);
    queue->postWaiting();
    EXPECT_EQ(named, 1);
    EXPECT_EQ(forOther, 0);
    EXPECT_EQ(all, 2);

    center->removeObserver(&all);
    center->removeObserver(&named, "Other", nullptr);
    center->postNotification(NSNotification::notificationWithName("Ready", subject.get()));
    EXPECT_EQ(named, 2);
    EXPECT_EQ(all, 2);
    center->removeObserver(&named);
}

TEST(NSRecursiveLock, BelongsToOneThreadAtATime) {
    NSRef<NSRecursiveLock> lock = NSRef<NSRecursiveLock>::adopt((new NSRecursiveLock)->init());
    lock->lock();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    EXPECT_TRUE(lock->isHeldByCurrentThread());
    std::thread([&] {
        EXPECT_FALSE(lock->isHeldByCurrentThread());
        EXPECT_FALSE(lock->tryLock());
    }).join();
    lock->unlock();
    EXPECT_FALSE(lock->isHeldByCurrentThread());
}
