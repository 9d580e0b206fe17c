// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSException.h>
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
#include <tests/support/TemporaryFile.h>

#include <cmath>
#include <filesystem>
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

class EndsWithAnother : public Counted {
public:
    void dealloc() override {
        retain();
        release(); // does not end it again
        (new Counted)->autorelease();
        Counted::dealloc();
    }
};

NSString* text(const char* bytes) {
    return NSString::stringWithUTF8String(bytes);
}

} // namespace

template <class... Classes>
constexpr bool onlyReleaseEnds = (!std::is_destructible_v<Classes> && ...);
static_assert(
    onlyReleaseEnds<NSObject, NSString, NSNumber, NSMutableArray, NSNotification, NSAutoreleasePool>);
TEST(NSObjectDeathTest, EndsByNothingButItsLastRelease) {
    EXPECT_DEATH(Counted(), "ended without its last release");
}

TEST(NSAutoreleasePool, EndsItsObjectsAndTheInnerPoolsWithIt) {
    auto* outer = (new NSAutoreleasePool)->init();
    (new EndsWithAnother)->autorelease();
    {
        const auto inner = NSInit(new NSAutoreleasePool);
        auto* counted = new Counted;
        EXPECT_EQ(counted->number, 0) << "it starts zero-filled";
        counted->autorelease();
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

TEST(NSString, TakesPathsApart) {
    const struct {
        const char *path, *last, *before, *extension, *without;
    } rows[] = {
        {"/a/b.c/d.e_0.png", "d.e_0.png", "/a/b.c", "png", "/a/b.c/d.e_0"},
        {"a.b/c", "c", "a.b", "", "a.b/c"},
        {"/d.png", "d.png", "/", "png", "/d"},
        {"d..png", "d..png", "", "png", "d."},
        {"a/d.png//", "d.png", "a", "png", "a/d"},
        {"a//.png", ".png", "a", "", "a//.png"},
        {"d.", "d.", "", "", "d"},
        {"//", "/", "/", "", "/"},
        {"", "", "", "", ""},
    };
    for (const auto& row : rows) {
        const NSString* path = text(row.path);
        EXPECT_STREQ(path->lastPathComponent()->UTF8String(), row.last) << row.path;
        EXPECT_STREQ(path->stringByDeletingLastPathComponent()->UTF8String(), row.before) << row.path;
        EXPECT_STREQ(path->pathExtension()->UTF8String(), row.extension) << row.path;
        EXPECT_STREQ(path->stringByDeletingPathExtension()->UTF8String(), row.without) << row.path;
    }
    for (const auto& [whole, separator, pieces] : {std::tuple("_a__b", "_", "|a||b|"),
                                                   {"ab", "_", "ab|"},
                                                   {"", "_", "|"},
                                                   {"a--b-", "--", "a|b-|"},
                                                   {"ab", "", "ab|"}}) {
        std::string joined;
        for (NSObject* piece : text(whole)->componentsSeparatedByString(text(separator))->objects())
            joined += static_cast<NSString*>(piece)->string() + "|";
        EXPECT_EQ(joined, pieces);
    }
}

TEST(NSString, DecodesOnlyValidUTF8) {
    const auto pool = NSInit(new NSAutoreleasePool);
    for (const char* bytes : {"", "plain", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8E\xA8"})
        EXPECT_STREQ(text(bytes)->UTF8String(), bytes);
    for (const char* bytes : {"\xFF", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "a\x80", static_cast<const char*>(nullptr)})
        EXPECT_EQ(text(bytes), nullptr) << bytes;
    EXPECT_EQ(text("\xF0\x9F\x8E\xA8\xC3\xA9\xE2\x82\xAC")->length(), 4);
    EXPECT_FALSE(text("a")->isEqual(text("ab")) || text("a")->isEqual(NSNumber::numberWithInt(1)));
    EXPECT_TRUE(text("a")->isEqual(text("a")));
}

TEST(NSString, FormatsLikePrintfAndTakesObjects) {
    const auto pool = NSInit(new NSAutoreleasePool);
    EXPECT_STREQ(NSString::stringWithFormat("%@_%d.%@|%5.2f|%-4d|%04x|%zu|%lld|%s|%c|100%%", text("sky"), 3,
                                            text("png"), 3.14159, -7, 255u, std::size_t(9), -1LL, "s", 'c')
                     ->UTF8String(),
                 "sky_3.png| 3.14|-7  |00ff|9|-1|s|c|100%");
    EXPECT_STREQ(NSString::stringWithFormat("%*d %@ %s %ld %.2Lf %u %x|%y|", 4, 7, nullptr, nullptr, 1L << 40,
                                            1.25L, ~0u, ~0u)
                     ->UTF8String(),
                 "   7 (null) (null) 1099511627776 1.25 4294967295 ffffffff|");
    const std::string big(5000, 'x');
    EXPECT_EQ(NSString::stringWithFormat("%s!", big.c_str())->string(), big + "!");
}

TEST(NSString, ReadsWholeFilesOrNothing) {
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto read = [](const char* path) {
        return NSString::stringWithContentsOfFile(text(path), NSUTF8StringEncoding, nullptr);
    };
    const std::string bytes("a\n\0b", 4);
    const vx::test::TemporaryFile file(bytes), notUTF8("\xFE\xFF");
    ASSERT_NE(read(file.path()), nullptr);
    EXPECT_EQ(read(file.path())->string(), bytes);
    EXPECT_FALSE(read(file.path())->isEqual(text("a\n"))) << "equal up to the NUL";
    const vx::test::TemporaryFile endless("");
    std::filesystem::resize_file(endless.path(), std::uintmax_t(1) << 40); // more than any memory
    for (const char* none : {notUTF8.path(), "/tmp/no such file", "/tmp", "/dev/zero", endless.path()})
        EXPECT_EQ(read(none), nullptr) << none;
    const auto exists = [](const char* path) {
        return NSFileManager::defaultManager()->fileExistsAtPath(text(path));
    };
    EXPECT_TRUE(exists(file.path()) && exists("/tmp") && !exists("/tmp/no such file"));
}

TEST(NSNumber, ConvertsWithinTheRangeOfTheResult) {
    const auto pool = NSInit(new NSAutoreleasePool);
    EXPECT_EQ(NSNumber::numberWithFloat(-3.9f)->intValue(), -3);
    EXPECT_EQ(NSNumber::numberWithDouble(1e300)->intValue(), std::numeric_limits<int>::max());
    EXPECT_EQ(NSNumber::numberWithDouble(NAN)->intValue(), 0);
    EXPECT_TRUE(NSNumber::numberWithInt(2)->isEqual(NSNumber::numberWithFloat(2.0f)));
}

TEST(NSMutableArrayDeathTest, RetainsItsObjectsFindsThemByValueAndRefusesWhatWouldReachPastItsEnd) {
    const auto pool = NSInit(new NSAutoreleasePool);
    auto array = NSInit(new NSMutableArray);
    array->addObject(NSNumber::numberWithInt(7));
    array->addObject(NSRef<Counted>::adopt(new Counted).get());
    EXPECT_EQ(Counted::living, 1);
    EXPECT_TRUE(array->containsObject(NSNumber::numberWithFloat(7.0f)));
    array->removeObjectAtIndex(1);
    EXPECT_EQ(Counted::living, 0);
    EXPECT_TRUE(array->objectAtIndex(0)->isEqual(NSNumber::numberWithInt(7)));
    const auto duringWalk = [&](const std::function<void()>& change) {
        for ([[maybe_unused]] NSObject* each : array->objects())
            change();
    };
    EXPECT_DEATH(duringWalk([&] { array->addObject(text("two")); }), "was changed while it was being walked");
    EXPECT_DEATH(duringWalk([&] { array->removeObjectAtIndex(0); }), "was changed while it was being walked");
    EXPECT_DEATH(array->objectAtIndex(1), "index 1 is outside a list of 1");
}

TEST(NSException, IsRaisedWithNameAndReasonAndSurvived) {
    auto array = NSInit(new NSMutableArray);
    auto dictionary = NSInit(new NSMutableDictionary);
    const auto raised = [](const std::function<void()>& action) {
        try {
            action();
        } catch (const NSException& exception) {
            const NSException copy = exception;
            EXPECT_EQ(copy.name()->string() + ": " + copy.reason()->string(), copy.what());
            return std::string(static_cast<const std::exception&>(copy).what());
        }
        return std::string();
    };
    EXPECT_EQ(raised([&] { array->addObject(nullptr); }),
              "NSInvalidArgumentException: NSMutableArray::addObject: the object is null");
    EXPECT_EQ(raised([&] { dictionary->setObject(nullptr, "size"); }),
              "NSInvalidArgumentException: NSMutableDictionary::setObject: the object is null, key size");
    const char* noKey = nullptr;
    EXPECT_NE(raised([&] { dictionary->setObject(array.get(), noKey); }), "");
    EXPECT_EQ(raised([] { NSException::raise("Own", "%d of %@", 3, NSString::stringWithUTF8String("x")); }),
              "Own: 3 of x");
    EXPECT_TRUE(array->count() == 0 && dictionary->count() == 0);
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

    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
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
    center->removeObserver(&observers[0]);
    center->addObserver(
        &observers[1],
        [this](NSNotification*) {
            center->removeObserver(&observers[2]);
            observe(0, "new ", "Removing", nullptr);
        },
        "Removing", nullptr);
    observe(2, "removed ", "Removing", nullptr);
    center->postNotification(NSNotification::notificationWithName("Removing", nullptr));
    EXPECT_EQ(taken(), "all ") << "neither whom an earlier handler removed nor who is new";
    center->postNotification(NSNotification::notificationWithName("Removing", nullptr));
    EXPECT_EQ(taken(), "all new ");
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
    center->addObserver(
        &observers[2], [](NSNotification*) { throw 1; }, "Failing", nullptr);
    queue->enqueueNotification(NSNotification::notificationWithName("Failing", nullptr), NSPostASAP);
    queue->enqueueNotification(ready(other.get()), NSPostASAP);
    EXPECT_THROW(queue->postWaiting(), int);
    queue->postWaiting();
    EXPECT_EQ(taken(), "other ") << "the rest waits on";
}

TEST(NSRecursiveLock, BelongsToOneThreadAtATime) {
    vx::test::LogCollector log;
    auto lock = NSInit(new NSRecursiveLock);
    lock->lock();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    EXPECT_TRUE(lock->isHeldByCurrentThread());
    std::thread([&] {
        EXPECT_FALSE(lock->isHeldByCurrentThread() || lock->tryLock());
        lock->unlock(); // not this thread's to give
    }).join();
    EXPECT_EQ(log.count("is not held by the calling thread"), 1);
    EXPECT_EQ(lock->holdCount(), 1);
    lock->unlock();
    EXPECT_FALSE(lock->isHeldByCurrentThread());
}
