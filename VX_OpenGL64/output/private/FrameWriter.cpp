// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/private/FrameWriter.h>

#include <pthread.h>
#include <csignal>
#include <utility>

namespace vx {

FrameWriter::FrameWriter(std::unique_ptr<FrameSink> sink, FrameCounts& counts)
    : m_Sink(std::move(sink)), m_Counts(counts), m_Thread([this] { run(); }) {}

FrameWriter::~FrameWriter() {
    join();
}

void FrameWriter::join() {
    {
        const std::lock_guard guard(m_Lock);
        m_Ending = true;
        m_Changed.notify_all();
    }
    if (m_Thread.joinable())
        m_Thread.join();
}

bool FrameWriter::finish() {
    join();
    return m_Sink->finish();
}

void FrameWriter::give(const std::uint8_t* pixels) {
    const std::lock_guard guard(m_Lock);
    m_Waiting.push_back(pixels);
    m_Changed.notify_all();
}

std::uint64_t FrameWriter::done(std::uint64_t known, bool wait) {
    std::unique_lock lock(m_Lock);
    if (wait)
        m_Changed.wait(lock, [&] { return m_Done > known; });
    return m_Done;
}

void FrameWriter::run() {
    pthread_setname_np(pthread_self(), "recorder");
    // A program that has ended is no end for the host.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    std::unique_lock lock(m_Lock);
    for (;;) {
        m_Changed.wait(lock, [this] { return m_Ending || !m_Waiting.empty(); });
        if (m_Waiting.empty())
            return;
        const std::uint8_t* const pixels = std::exchange(m_Waiting.front(), nullptr);
        m_Waiting.pop_front();
        lock.unlock();
        ++(m_Sink->write(pixels) ? m_Counts.written : m_Counts.dropped);
        lock.lock();
        ++m_Done;
        m_Changed.notify_all();
    }
}

} // namespace vx
