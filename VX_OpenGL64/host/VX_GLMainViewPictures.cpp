// SPDX-License-Identifier: MIT
// Frames kept as pictures, and frames drawn one by one.
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/host/private/MainViewInternals.h>
#include <VX_OpenGL64/targets/VX_GLPictureFile.h>
#include <VX_OpenGL64/targets/private/ReadSource.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/Clock.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <chrono>
#include <utility>

namespace {

constexpr auto kLongestWait = std::chrono::seconds(2);

} // namespace

bool VX_GLMainView::SaveFrame(const char* path) {
    if (!path) {
        NSLog("VX_GLMainView::SaveFrame: there is no path");
        return false;
    }
    return m_Internals->isInFrame() ? savePicture(path) : m_Internals->waitForSave(path);
}

bool VX_GLMainView::Internals::waitForSave(const char* path) {
    SaveRequest request{path};
    std::unique_lock lock(saveLock);
    const auto free = [this] { return save == nullptr; };
    if (saveDone.wait_for(lock, kLongestWait, free)) {
        save = &request;
        saveDone.wait_for(lock, kLongestWait, [&] { return request.done; });
        if (save == &request)
            save = nullptr;
        saveDone.notify_all();
    }
    if (!request.done)
        NSLog("VX_GLMainView::SaveFrame: no frame came within %lld s to be saved to %s",
              static_cast<long long>(kLongestWait.count()), path);
    return request.saved;
}

void VX_GLMainView::saveIfAsked(const Frame& frame) {
    if (frame.savePath)
        *frame.saved = savePicture(frame.savePath);
    std::lock_guard guard(m_Internals->saveLock);
    Internals::SaveRequest* request = std::exchange(m_Internals->save, nullptr);
    if (!request)
        return;
    request->saved = savePicture(request->path);
    request->done = true;
    m_Internals->saveDone.notify_all();
}

bool VX_GLMainView::savePicture(const char* path) {
    vx::needContext("VX_GLMainView", "SaveFrame");
    const vx::ReadSource source;
    return VX_GLSavePicture(path, 0, 0, static_cast<int>(m_Width), static_cast<int>(m_Height));
}

void VX_GLMainView::SetStepped(bool stepped) {
    m_Internals->stepped = stepped;
}

bool VX_GLMainView::StepFrame(double seconds, const char* path) {
    const Hold hold(this);
    const Frame prepared = takeFrame(nullptr);
    if (m_DisplayLink || !prepared.context || !prepared.context->makeCurrentContext()) {
        NSLog(m_DisplayLink
                  ? "VX_GLMainView::StepFrame: view %p draws by itself; call SetStepped(true) before "
                    "it starts"
                  : "VX_GLMainView::StepFrame: view %p has no context to be drawn with; it gets one "
                    "in a shown window, by a step of the run loop",
              static_cast<void*>(this));
        return false;
    }
    CVTimeStamp time;
    time.hostTime = static_cast<std::uint64_t>(seconds * vx::Clock::kSecond);
    time.frameCount = m_Internals->steppedFrames++;
    m_Internals->frameTime = seconds;
    bool saved = !path;
    Frame frame = prepared;
    frame.time = &time;
    frame.savePath = path;
    frame.saved = &saved;
    return drawLocked(frame) && saved;
}

void VX_GLMainView::SetFollowsSize(bool follows) {
    m_Internals->followsSize = follows;
}

std::uint64_t VX_GLMainView::GetDrawnFrames() const {
    return m_Internals->meter.frames();
}

double VX_GLMainView::GetFrameRate() const {
    return m_Internals->meter.rate();
}

double VX_GLMainView::GetFrameTime() const {
    return m_Internals->frameTime;
}
