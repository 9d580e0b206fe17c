// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/private/FileWatch.h>

#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/private/Clock.h>

#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <utility>

namespace vx {

namespace {

constexpr std::uint64_t kInterval = Clock::kSecond / 10;
// Looks after which a file that never rests is read all the same.
constexpr int kPatience = 10;
constexpr off_t kLargest = 16 << 20;

std::optional<std::string> contentsOf(const std::string& path) {
    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
    NSString* const name = NSString::stringWithCString(path.c_str(), NSUTF8StringEncoding);
    NSString* const text = NSString::stringWithContentsOfFile(name, NSUTF8StringEncoding, nullptr);
    return text ? std::optional<std::string>(text->UTF8String()) : std::nullopt;
}

std::size_t digestOf(const std::optional<std::string>& text) {
    return text ? std::hash<std::string>{}(*text) : 0;
}

} // namespace

FileWatch::FileWatch() : m_WakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    try {
        m_Thread = std::thread([this] { run(); });
    } catch (...) {
        close(m_WakeDescriptor);
        throw;
    }
}

FileWatch::~FileWatch() {
    m_Ending = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_WakeDescriptor, &one, sizeof one);
    m_Thread.join();
    close(m_WakeDescriptor);
}

void FileWatch::follow(const std::string& name, std::vector<std::string> paths,
                       const std::optional<std::string>& known) {
    const std::optional<std::size_t> digest = known ? std::optional(digestOf(known)) : std::nullopt;
    const std::lock_guard guard(m_Lock);
    m_Files.try_emplace(name, Followed{{}, digest, {}, {}, 0}).first->second.paths = std::move(paths);
}

std::map<std::string, FileWatch::News> FileWatch::takeNews() {
    const std::lock_guard guard(m_Lock);
    m_HasNews = false;
    return std::exchange(m_News, {});
}

void FileWatch::run() {
    pthread_setname_np(pthread_self(), "file watch");
    for (std::uint64_t next = Clock::system().now() + kInterval;
         !m_Ending && Clock::system().sleepUntil(next, m_WakeDescriptor);
         next = Clock::system().now() + kInterval)
        lookAtAll();
}

// A disk may take its time: it is asked without the lock.
void FileWatch::lookAtAll() {
    std::unique_lock lock(m_Lock);
    const std::map<std::string, Followed> files = m_Files;
    lock.unlock();
    for (const auto& [name, file] : files)
        if (const std::optional<Stamp> present = stampOf(file.paths); present && *present != file.read)
            readAnew(name, file, *present);
}

std::optional<FileWatch::Stamp> FileWatch::stampOf(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        struct stat state {};
        if (stat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode) && state.st_size <= kLargest)
            return Stamp{
                path, state.st_dev, state.st_ino, static_cast<std::uint64_t>(state.st_size),
                state.st_mtim.tv_sec * static_cast<std::int64_t>(Clock::kSecond) + state.st_mtim.tv_nsec};
    }
    return std::nullopt;
}

bool FileWatch::isRestless(Followed& file, const Stamp& present) {
    if (std::exchange(file.seen, present) == present || ++file.restless > kPatience)
        file.restless = 0;
    else
        return true;
    return false;
}

void FileWatch::readAnew(const std::string& name, Followed file, const Stamp& present) {
    if (!isRestless(file, present)) {
        News news{present.path, contentsOf(present.path)};
        if (stampOf(file.paths) == present) {
            file.read = present;
            tell(name, file, std::move(news));
        }
    }
    const std::lock_guard guard(m_Lock);
    std::swap(file.paths, m_Files[name].paths);
    m_Files[name] = std::move(file);
}

void FileWatch::tell(const std::string& name, Followed& file, News news) {
    const std::size_t digest = digestOf(news.text);
    const std::optional<std::size_t> former = std::exchange(file.known, digest);
    if (!former || *former == digest)
        return;
    const std::lock_guard guard(m_Lock);
    m_News[name] = std::move(news);
    m_HasNews.store(true, std::memory_order_release);
}

} // namespace vx
