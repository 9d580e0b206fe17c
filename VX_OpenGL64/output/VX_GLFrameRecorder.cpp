// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLFrameRecorder.h>

#include <VX_OpenGL64/output/private/FrameWriter.h>
#include <VX_OpenGL64/targets/private/ReadSource.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>
#include <VX_Platform/OpenGL/private/PlainPacking.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

constexpr int kLongest = 16384;
constexpr GLuint64 kPatience = 1000000000; // nanoseconds

} // namespace

struct VX_GLFrameRecorder::Counts : vx::FrameCounts {};

/// One recording: the ring, and who writes what comes out of it.
struct VX_GLFrameRecorder::Recording {
    /// A pixel buffer on its way: filled by GL, then read by the writer.
    struct Read {
        GLuint buffer = 0;
        GLsync filled = nullptr;
    };

    Recording(std::unique_ptr<vx::FrameSink> sink, vx::FrameCounts& counts, int width, int height,
              VX_GLFrameRecorderBehind behind, int buffers)
        : counts(counts),
          width(width),
          height(height),
          behind(behind),
          context(NSRef<NSOpenGLContext>::retain(NSOpenGLContext::currentContext())),
          writer(std::move(sink), counts) {
        free.resize(static_cast<std::size_t>(std::clamp(buffers, 2, 64)));
        glGenBuffers(static_cast<GLsizei>(free.size()), free.data());
        GLint former = 0;
        glGetIntegerv(GL_PIXEL_PACK_BUFFER_BINDING, &former);
        for (const GLuint buffer : free) {
            glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
            glBufferData(GL_PIXEL_PACK_BUFFER, static_cast<GLsizeiptr>(width) * height * 4, nullptr,
                         GL_STREAM_READ);
        }
        glBindBuffer(GL_PIXEL_PACK_BUFFER, static_cast<GLuint>(former));
    }

    void startReading();
    bool handOver(bool wait);
    void handOverReady();
    void takeBack(bool wait);
    void drain();
    void deleteBuffers();
    GLuint anyBuffer() const;

    vx::FrameCounts& counts;
    const int width, height;
    const VX_GLFrameRecorderBehind behind;
    /// Kept: what the writer reads is its memory.
    const NSRef<NSOpenGLContext> context;
    std::vector<GLuint> free;
    std::deque<Read> reading;
    std::deque<GLuint> writing;
    std::uint64_t taken = 0;
    /// Of the frames that the writer is done with, those whose buffers are back.
    std::uint64_t back = 0;
    vx::FrameWriter writer;
};

// Into a free buffer, of which there is one. What is ready goes to the writer only then, whose copying would
// hold up a driver that reads at once.
void VX_GLFrameRecorder::Recording::startReading() {
    const GLuint buffer = free.back();
    free.pop_back();
    ++taken;
    const vx::PlainPacking packing;
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, nullptr);
    reading.push_back(
        {buffer, vx::currentGLCapabilities().sync ? glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0) : nullptr});
    handOverReady();
}

void VX_GLFrameRecorder::Recording::handOverReady() {
    while (handOver(false)) {
    }
}

// Gives the writer the oldest buffer that GL is filling, where it has; false where it has not.
bool VX_GLFrameRecorder::Recording::handOver(bool wait) {
    if (reading.empty())
        return false;
    const Read oldest = reading.front();
    // Without fences mapping waits, so that a buffer is left its time.
    if (!oldest.filled && !wait && reading.size() < 2)
        return false;
    if (oldest.filled && glClientWaitSync(oldest.filled, GL_SYNC_FLUSH_COMMANDS_BIT, wait ? kPatience : 0) ==
                             GL_TIMEOUT_EXPIRED)
        return false;
    reading.pop_front();
    if (oldest.filled)
        glDeleteSync(oldest.filled);
    const vx::PlainPacking packing;
    glBindBuffer(GL_PIXEL_PACK_BUFFER, oldest.buffer);
    const void* const pixels = glMapBuffer(GL_PIXEL_PACK_BUFFER, GL_READ_ONLY);
    if (!pixels) { // the driver has no memory for it
        ++counts.dropped;
        free.push_back(oldest.buffer);
        return true;
    }
    writing.push_back(oldest.buffer);
    writer.give(static_cast<const std::uint8_t*>(pixels));
    return true;
}

// Those that the writer is done with; waits for one where there is one to wait for.
void VX_GLFrameRecorder::Recording::takeBack(bool wait) {
    const std::uint64_t done = writer.done(back, wait && !writing.empty());
    if (done == back)
        return;
    const vx::PlainPacking packing;
    for (; back < done; ++back) {
        glBindBuffer(GL_PIXEL_PACK_BUFFER, writing.front());
        glUnmapBuffer(GL_PIXEL_PACK_BUFFER);
        free.push_back(writing.front());
        writing.pop_front();
    }
}

void VX_GLFrameRecorder::Recording::drain() {
    while (!reading.empty() && handOver(true)) {
    }
    while (!writing.empty())
        takeBack(true);
}

// Those that are mapped too, which ends that.
void VX_GLFrameRecorder::Recording::deleteBuffers() {
    for (const Read& read : reading) {
        if (read.filled)
            glDeleteSync(read.filled);
        free.push_back(read.buffer);
    }
    free.insert(free.end(), writing.begin(), writing.end());
    glDeleteBuffers(static_cast<GLsizei>(free.size()), free.data());
}

GLuint VX_GLFrameRecorder::Recording::anyBuffer() const {
    return !free.empty() ? free.front() : !reading.empty() ? reading.front().buffer : writing.front();
}

VX_GLFrameRecorder::VX_GLFrameRecorder() : m_Counts(std::make_unique<Counts>()) {}

VX_GLFrameRecorder::~VX_GLFrameRecorder() {
    Finish();
}

bool VX_GLFrameRecorder::OpenPictures(const char* directory, int width, int height,
                                      VX_GLFrameRecorderBehind behind, int buffers) {
    VX_NEEDS_CONTEXT();
    return prepare(width, height) && open(vx::makePictureSink(directory ? directory : "", width, height),
                                          width, height, behind, buffers);
}

bool VX_GLFrameRecorder::OpenProgram(const char* command, int width, int height,
                                     VX_GLFrameRecorderBehind behind, int buffers) {
    VX_NEEDS_CONTEXT();
    return prepare(width, height) &&
           open(vx::makeProgramSink(command ? command : "", width, height), width, height, behind, buffers);
}

bool VX_GLFrameRecorder::prepare(int width, int height) {
    Finish();
    m_Counts->written = m_Counts->dropped = 0;
    if (width >= 1 && height >= 1 && width <= kLongest && height <= kLongest)
        return true;
    NSLog("VX_GLFrameRecorder: frames of %d x %d cannot be recorded; a side has 1 to %d pixels", width,
          height, kLongest);
    return false;
}

bool VX_GLFrameRecorder::open(std::unique_ptr<vx::FrameSink> sink, int width, int height,
                              VX_GLFrameRecorderBehind behind, int buffers) {
    try {
        if (sink)
            m_Recording =
                std::make_unique<Recording>(std::move(sink), *m_Counts, width, height, behind, buffers);
    } catch (const std::system_error& failure) {
        NSLog("VX_GLFrameRecorder: no thread to write on: %s", failure.what());
    }
    return IsOpen();
}

bool VX_GLFrameRecorder::TakeFrame() {
    VX_NEEDS_CONTEXT();
    if (!makeRoom())
        return false;
    const vx::ReadSource source;
    m_Recording->startReading();
    return true;
}

bool VX_GLFrameRecorder::TakeFrame(VX_GLRenderTarget* target, int index) {
    VX_NEEDS_CONTEXT();
    if (!vx::ReadSource::isThere(target, index)) {
        NSLog("VX_GLFrameRecorder::TakeFrame: the target has no colour attachment %d", index);
        return false;
    }
    if (!makeRoom())
        return false;
    const vx::ReadSource source(*target, index);
    m_Recording->startReading();
    return true;
}

// A free buffer for the next frame, where there is one or a host waits for it; else the frame is dropped.
bool VX_GLFrameRecorder::makeRoom() {
    if (!m_Recording)
        return false;
    const bool waits = m_Recording->behind == VX_GLFrameRecorderBehind::wait;
    m_Recording->takeBack(false);
    if (m_Recording->free.empty())
        m_Recording->handOverReady();
    while (waits && m_Recording->free.empty()) {
        m_Recording->handOver(m_Recording->writing.empty());
        m_Recording->takeBack(true);
    }
    if (!m_Recording->free.empty())
        return true;
    ++m_Counts->dropped;
    return false;
}

bool VX_GLFrameRecorder::Finish() {
    if (!m_Recording)
        return true;
    const bool hasContext = vx::mayDelete("VX_GLFrameRecorder", m_Recording->anyBuffer());
    if (hasContext)
        m_Recording->drain();
    m_Counts->dropped += m_Recording->reading.size();
    const bool endedWell = m_Recording->writer.finish();
    if (hasContext)
        m_Recording->deleteBuffers();
    const bool isComplete = m_Counts->written == m_Recording->taken;
    m_Recording.reset();
    return endedWell && isComplete;
}

std::uint64_t VX_GLFrameRecorder::GetWrittenFrames() const {
    return m_Counts->written;
}

std::uint64_t VX_GLFrameRecorder::GetDroppedFrames() const {
    return m_Counts->dropped;
}
