// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vx {

/// Reads text files anew when they change, on a thread of its own: whoever draws asks one flag and never
/// waits for a disk. Ten times a second it looks at times and sizes; that works on every file system, for
/// files and folders that come and go, and however an editor replaces them. A file that is being written is
/// read once it has rested, or a second after it began to change.
class FileWatch {
public:
    struct News {
        std::string path;
        /// Nothing where it cannot be read or is not UTF-8.
        std::optional<std::string> text;
    };

    /// Starts the thread; throws `std::system_error` where there is none to be had.
    FileWatch();
    /// Ends it and waits for that.
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// Follows the first of `paths` that is a regular file, under `name`. `known` is its text as far as the
    /// caller has read it, else what is found first counts as known. Of a name that is followed already
    /// only the paths are taken.
    void follow(const std::string& name, std::vector<std::string> paths,
                const std::optional<std::string>& known);

    /// Whether `takeNews` has anything to give; one atomic load.
    bool hasNews() const { return m_HasNews.load(std::memory_order_acquire); }
    /// What has changed since the last call, by name, each with its latest text.
    std::map<std::string, News> takeNews();

private:
    /// What tells one state of a file from another without reading it.
    struct Stamp {
        std::string path;
        std::uint64_t device = 0, file = 0, size = 0;
        std::int64_t changed = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Followed {
        std::vector<std::string> paths;
        /// A digest of the text that the caller has; none while it does not matter.
        std::optional<std::size_t> known;
        Stamp read, seen;
        int restless = 0;
    };

    static std::optional<Stamp> stampOf(const std::vector<std::string>& paths);
    static bool isRestless(Followed& file, const Stamp& present);
    void run();
    void lookAtAll();
    void readAnew(const std::string& name, Followed file, const Stamp& present);
    void tell(const std::string& name, Followed& file, News news);

    std::mutex m_Lock;
    std::map<std::string, Followed> m_Files;
    std::map<std::string, News> m_News;
    std::atomic<bool> m_HasNews{false};
    std::atomic<bool> m_Ending{false};
    int m_WakeDescriptor;
    std::thread m_Thread;
};

} // namespace vx
