// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSFileManager.h>
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
#include <tests/support/LogCollector.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <utility>

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

class EndsWithAnother : public Counted {
public:
    void dealloc() override {
        (new Counted)->autorelease();
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
    (new EndsWithAnother)->autorelease();
    {
        ScopedPool inner;
        (new Counted)->autorelease();
        EXPECT_EQ(Counted::living, 2);
    }
    EXPECT_EQ(Counted::living, 1);
    (new NSAutoreleasePool)->init(); // left open
    (new Counted)->autorelease();
    outer->release();
    EXPECT_EQ(Counted::living, 0);

    std::thread([] {
        (new EndsWithAnother)->autorelease();
        NSAutoreleasePool::drainThreadPool();
        EXPECT_EQ(Counted::living, 0);
        (new EndsWithAnother)->autorelease();
    }).join();
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
    EXPECT_EQ((new NSString)->initWithUTF8String("\xFF"), nullptr);
    EXPECT_EQ(NSString::stringWithCString("a", NSStringEncoding(1)), nullptr);
    EXPECT_EQ(text("\xF0\x9F\x8E\xA8\xC3\xA9\xE2\x82\xAC")->length(), 4);
    EXPECT_FALSE(text("a")->isEqual(text("ab")) || text("a")->isEqual(NSNumber::numberWithInt(1)));
    EXPECT_TRUE(text("a")->isEqual(text("a")));
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
    EXPECT_STREQ(NSString::stringWithFormat("%ld %u %x|%y|", 1L << 40, ~0u, ~0u)->UTF8String(),
                 "1099511627776 4294967295 ffffffff|");
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
    std::ofstream(path, std::ios::binary) << "a" << '\0' << "b";
    EXPECT_EQ(read()->string().size(), 3u);
    EXPECT_FALSE(read()->isEqual(text("a"))) << "equal up to the NUL";
    EXPECT_TRUE(NSFileManager::defaultManager()->fileExistsAtPath(text(path.c_str())));
    EXPECT_TRUE(NSFileManager::defaultManager()->fileExistsAtPath(text(testing::TempDir().c_str())));
    std::ofstream(path, std::ios::binary) << "\xFE\xFF";
    EXPECT_EQ(read(), nullptr) << "not UTF-8";
    std::filesystem::remove(path);
    EXPECT_EQ(read(), nullptr) << "missing";
    EXPECT_FALSE(NSFileManager::defaultManager()->fileExistsAtPath(text(path.c_str())));
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
    EXPECT_EQ(NSNumber::numberWithBool(true)->intValue(), 1);
    EXPECT_EQ(NSNumber::numberWithDouble(0.1)->doubleValue(), 0.1);
    EXPECT_TRUE(NSNumber::numberWithInt(2)->isEqual(NSNumber::numberWithFloat(2.0f)));
    EXPECT_FALSE(NSNumber::numberWithInt(2)->isEqual(NSNumber::numberWithInt(3)));
}

TEST(NSMutableArray, RetainsItsObjectsAndFindsThemByValue) {
    ScopedPool pool;
    auto array = NSRef<NSMutableArray>::adopt((new NSMutableArray)->init());
    array->addObject(NSNumber::numberWithInt(7));
    auto* object = new Counted;
    array->addObject(object);
    object->release();
    EXPECT_EQ(Counted::living, 1);
    EXPECT_TRUE(array->containsObject(NSNumber::numberWithFloat(7.0f)));
    EXPECT_FALSE(array->containsObject(nullptr));
    array->removeObjectAtIndex(1);
    EXPECT_EQ(Counted::living, 0);
    EXPECT_TRUE(array->objectAtIndex(0)->isEqual(NSNumber::numberWithInt(7)));
}

TEST(NSMutableArrayDeathTest, RefusesWhatWouldReachPastItsEnd) {
    auto* array = (new NSMutableArray)->init();
    NSRef<Counted> object = NSRef<Counted>::adopt(new Counted);
    array->addObject(object.get());
    const auto changeInWalk = [&] {
        for (NSObject* each : array->objects())
            array->addObject(each);
    };
    const auto removeInWalk = [&] {
        for ([[maybe_unused]] NSObject* each : array->objects())
            array->removeObjectAtIndex(0);
    };
    EXPECT_DEATH(changeInWalk(), "was changed while it was being walked");
    EXPECT_DEATH(removeInWalk(), "was changed while it was being walked");
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

namespace {

// Observers that note their calls.
class NotificationTest : public testing::Test {
protected:
    ~NotificationTest() override {
        for (const char& observer : observers)
            center->removeObserver(&observer);
    }
    void observe(int observer, const char* mark, const char* name, const NSObject* object) {
        center->addObserver(
            &observers[observer], [this, mark](NSNotification*) { calls += mark; }, name, object);
    }
    NSNotification* ready(NSObject* object) { return NSNotification::notificationWithName("Ready", object); }
    std::string taken() { return std::exchange(calls, {}); }

    ScopedPool pool;
    NSNotificationCenter* center = NSNotificationCenter::defaultCenter();
    NSNotificationQueue* queue = NSNotificationQueue::defaultQueue();
    NSRef<Counted> subject = NSRef<Counted>::adopt(new Counted), other = NSRef<Counted>::adopt(new Counted);
    char observers[3];
    std::string calls;
};

} // namespace

TEST_F(NotificationTest, IsDeliveredByNameAndObjectInTheOrderOfRegistration) {
    observe(0, "named ", "Ready", subject.get());
    observe(1, "all ", nullptr, nullptr);
    observe(0, "other ", "Ready", other.get());
    observe(2, "last ", "Ready", nullptr);
    center->postNotification(ready(subject.get()));
    EXPECT_EQ(taken(), "named all last ");
    center->postNotification(NSNotification::notificationWithName("Other", subject.get()));
    EXPECT_EQ(taken(), "all ");
    center->removeObserver(&observers[0], "Other", nullptr);
    center->removeObserver(&observers[0], "Ready", other.get());
    center->removeObserver(&observers[1], "Ready", nullptr);
    center->postNotification(ready(subject.get()));
    center->postNotification(ready(other.get()));
    EXPECT_EQ(taken(), "named all last all last ");
}

TEST_F(NotificationTest, CallsNobodyWhomAnEarlierHandlerRemoved) {
    center->addObserver(
        &observers[0],
        [this](NSNotification*) {
            center->removeObserver(&observers[1]);
            observe(2, "new ", "Ready", nullptr);
        },
        "Ready", nullptr);
    observe(1, "removed ", "Ready", nullptr);
    center->postNotification(ready(nullptr));
    EXPECT_EQ(taken(), "");
    center->removeObserver(&observers[0]);
    center->postNotification(ready(nullptr));
    EXPECT_EQ(taken(), "new ");
}

TEST_F(NotificationTest, WaitsInItsThreadsQueueInOrder) {
    observe(0, "subject ", "Ready", subject.get());
    observe(1, "other ", "Ready", other.get());
    center->addObserver(
        &observers[2],
        [this](NSNotification*) { queue->enqueueNotification(ready(other.get()), NSPostASAP); }, "Ready",
        subject.get());
    queue->enqueueNotification(ready(subject.get()), NSPostWhenIdle);
    queue->enqueueNotification(ready(other.get()), NSPostASAP);
    std::thread([] { NSNotificationQueue::defaultQueue()->postWaiting(); }).join();
    EXPECT_EQ(taken(), "");
    queue->postWaiting();
    EXPECT_EQ(taken(), "subject other ") << "what an observer enqueues waits for the next time";
    queue->postWaiting();
    EXPECT_EQ(taken(), "other ");
    queue->enqueueNotification(ready(other.get()), NSPostNow);
    EXPECT_EQ(taken(), "other ");
}

TEST(NSRecursiveLock, BelongsToOneThreadAtATime) {
    vx::test::LogCollector log;
    NSRef<NSRecursiveLock> lock = NSRef<NSRecursiveLock>::adopt((new NSRecursiveLock)->init());
    lock->lock();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    EXPECT_TRUE(lock->isHeldByCurrentThread());
    std::thread([&] {
        EXPECT_FALSE(lock->isHeldByCurrentThread());
        EXPECT_FALSE(lock->tryLock());
        lock->unlock(); // not this thread's to give
    }).join();
    EXPECT_EQ(log.count("is not held by the calling thread"), 1);
    EXPECT_EQ(lock->holdCount(), 1);
    lock->unlock();
    EXPECT_FALSE(lock->isHeldByCurrentThread());
    std::thread([&] {
        EXPECT_TRUE(lock->tryLock());
        EXPECT_EQ(lock->holdCount(), 1);
        lock->unlock();
    }).join();
}
