// SPDX-License-Identifier: MIT
// One scene seen from the front, and from above and from the side in windows of their own. What is drawn with
// is made once, by the main view's context. Escape closes a window; the main one takes the others along.
#include <examples/support/ExampleHost.h>
#include <examples/two_views/Scene.h>

#include <VX_OpenGL64/host/VX_GLSharedView.h>
#include <VX_OpenGL64/targets/VX_GLPictureFile.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr Eye kFront{"front", {0.0f, 3.8f, 11.5f}, {0.0f, 1.0f, 0.0f}, {0.07f, 0.08f, 0.1f}, 0.0f};
constexpr Eye kOthers[] = {{"above", {0.0f, 12.0f, 0.0f}, {0.0f, 0.0f, -1.0f}, {0.06f, 0.1f, 0.16f}, 6.8f},
                           {"side", {10.0f, 1.3f, 0.0f}, {0.0f, 1.0f, 0.0f}, {0.16f, 0.1f, 0.08f}, 4.6f}};

class ScenePipeline : public VX_GLRenderpipeline {
public:
    explicit ScenePipeline(const ExampleOptions& options) : m_Options(options) {}

    void doStartRender() override { m_Scene.prepare(); }
    void doStopRender() override {
        m_Scene.release();
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        m_Scene.moveTo(m_TargetGLView->GetFrameTime());
        draw(kFront, bounds);
    }
    // The same frame once more for each further view, whose own context is current.
    void renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) override {
        const auto* number =
            static_cast<NSNumber*>(view->objectForKey(NSString::stringWithUTF8String("eye")));
        const Eye& eye = kOthers[number->intValue()];
        draw(eye, bounds);
        if (m_Options.endsAt(m_TargetGLView->GetFrameTime()))
            VX_GLSavePicture(m_Options.pictureOf(eye.name).c_str(), 0, 0,
                             static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
    }

private:
    void draw(const Eye& eye, const CGRect* bounds) {
        m_Scene.draw(eye, static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
    }

    const ExampleOptions& m_Options;
    Scene m_Scene;
};

// The windows beside the main one, each with a view of its own.
class OtherWindows {
public:
    ~OtherWindows() { NSNotificationCenter::defaultCenter()->removeObserver(this); }

    void open(VX_GLHost& host, VX_GLRenderpipeline* pipeline) {
        m_Main = host.view();
        const CGRect main = host.window()->frame();
        CGRect frame = CGRectMake(main.origin.x + main.size.width + 20.0, main.origin.y,
                                  main.size.width * 0.5, (main.size.height - 40.0) * 0.5);
        for (int eye = 0; eye < 2; ++eye) {
            open(frame, eye, pipeline);
            frame.origin.y += frame.size.height + 40.0;
        }
        whenClosed(host.window(), [this] { closeAll(); });
        host.window()->makeKeyAndOrderFront(); // it has the keyboard first
    }

private:
    // Not resizable, since a further view keeps the size that it was set up with.
    void open(CGRect frame, int eye, VX_GLRenderpipeline* pipeline) {
        const auto window = NSInit(new NSWindow, frame, NSTitledWindowMask | NSClosableWindowMask);
        const auto view = NSInit(new VX_GLSharedView, frame, nullptr);
        view->setRenderpipeline(pipeline);
        view->setObject(NSNumber::numberWithInt(eye), NSString::stringWithUTF8String("eye"));
        m_Main->addChildSharedView(view.get()); // which sets it up when it is prepared itself
        window->setTitle(kOthers[eye].name);
        window->setContentView(view.get());
        window->setEventHandler([window = window.get()](NSEvent* event) {
            const bool closes = event->type() == NSKeyDown && event->key() == NSEscapeKey;
            if (closes)
                window->performClose();
            return closes;
        });
        whenClosed(window.get(), [this, window = window.get()] { drop(window); });
        m_Windows.push_back({window, view});
        window->makeKeyAndOrderFront();
    }
    void whenClosed(NSWindow* window, std::function<void()> act) {
        NSNotificationCenter::defaultCenter()->addObserver(
            this, [act = std::move(act)](NSNotification*) { act(); }, NSWindowWillCloseNotification, window);
    }
    // The list of views changes between two frames, under the lock.
    void drop(const NSWindow* window) {
        m_Main->RenderThreadLock();
        m_Main->removeAllChildSharedViews();
        for (const Other& other : m_Windows)
            if (other.window.get() == window)
                other.view->releaseResources();
            else if (!other.window->isClosed())
                m_Main->addChildSharedView(other.view.get());
        m_Main->RenderThreadUnLock();
    }
    void closeAll() {
        for (const Other& other : m_Windows)
            other.window->close();
    }

    struct Other {
        NSRef<NSWindow> window;
        NSRef<VX_GLSharedView> view;
    };
    VX_GLMainView* m_Main = nullptr;
    std::vector<Other> m_Windows;
};

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    ExampleOptions options;
    options.host.title = "front";
    options.host.width = 640;
    options.host.height = 520;
    for (int i = 1; i < count; ++i) {
        if (!options.take(count, words, i)) {
            std::fprintf(stderr, "usage: %s %s\n", words[0], ExampleOptions::kUsage);
            return 2;
        }
    }
    const auto pipeline = NSInit(new ScenePipeline(options));
    OtherWindows others;
    return runExample(pipeline.get(), options, [&](VX_GLHost& host) { others.open(host, pipeline.get()); });
}
