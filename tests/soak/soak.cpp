// SPDX-License-Identifier: MIT
// soak SECONDS [--platform NAME]: two views that restart themselves from their hooks, while threads and the
// run loop stop, start, move, resize, release and lock them at random. Ends with 0 when both views still draw
// and no holder of a lock was refused the context.
#include <tests/support/ScriptedPipeline.h>

#include <epoxy/gl.h>

#include <cstdio>
#include <cstring>
#include <random>

using namespace vx::test;

namespace {

struct Dice : std::minstd_rand {
    using std::minstd_rand::minstd_rand;
    bool oneIn(unsigned sides) { return (*this)() % sides == 0; }
    double upTo(unsigned most) { return double(1 + (*this)() % most); }
    void rest(unsigned most) { std::this_thread::sleep_for(std::chrono::milliseconds((*this)() % most)); }
};

struct Soaked {
    Stage stage{Stage::Draws::byItself};
    std::atomic<unsigned> texture{0};
    std::atomic<unsigned> frames{0}, refused{0};

    // A hook may take the locks of views further on, never of one before it: two hooks would wait for each
    // other.
    void drawBeside(Soaked* next, unsigned seed) {
        stage.onRender([this, next, dice = Dice(seed)]() mutable {
            glClear(GL_COLOR_BUFFER_BIT);
            glIsTexture(texture);
            ++frames;
            if (dice.oneIn(20))
                restart();
            else if (next && dice.oneIn(10))
                next->work();
            else if (dice.oneIn(40))
                throw std::runtime_error("a hook fails");
        });
    }
    void restart() {
        stage.view->RenderThreadLock();
        stage.view->stopRender();
        stage.view->startRender();
        stage.view->RenderThreadUnLock();
    }
    void work() {
        stage.view->RenderThreadLock();
        if (stage.view->makeCurrentContext()) {
            GLuint name = texture;
            glDeleteTextures(1, &name);
            glGenTextures(1, &name);
            glBindTexture(GL_TEXTURE_2D, name);
            texture = name;
        } else if (stage.view->existingOpenGLContext()) {
            ++refused;
        }
        stage.view->RenderThreadUnLock();
    }
    // On the run loop's thread.
    void upset(Dice& dice) {
        if (dice.oneIn(3))
            stage.window->setFrame(
                CGRectMake(dice.upTo(400), dice.upTo(400), dice.upTo(300), dice.upTo(300)));
        if (dice.oneIn(4))
            restart();
        if (dice.oneIn(20)) {
            stage.view->stopRender();
            NSOpenGLContext::clearCurrentContext();
            stage.attachPipeline();
            NSOpenGLContext::clearCurrentContext();
        }
        stage.view->SetSkipRenderThread(dice.oneIn(5));
    }
    bool stillDraws() {
        stage.view->SetSkipRenderThread(false);
        restart();
        const unsigned before = frames;
        return waitFor([&] {
            stage.step();
            return frames > before + 3;
        });
    }
};

bool soak(double seconds) {
    Soaked second, first; // the hook of the first works on the second, which ends after it
    first.drawBeside(&second, 1);
    second.drawBeside(nullptr, 2);
    std::atomic<bool> done{false};
    std::vector<std::thread> hosts;
    for (unsigned seed = 3; seed < 5; ++seed)
        hosts.emplace_back([&, dice = Dice(seed)]() mutable {
            while (!done) {
                Soaked& one = dice.oneIn(2) ? first : second;
                dice.oneIn(8) ? one.restart() : one.work();
                dice.rest(12);
            }
        });
    Dice dice(6);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) {
        first.upset(dice);
        second.upset(dice);
        NSApplication::sharedApplication()->runStep(0.0);
        dice.rest(40);
    }
    done = true;
    for (std::thread& host : hosts)
        host.join();
    const bool draws = first.stillDraws() && second.stillDraws();
    std::printf("%u and %u frames, %u and %u refusals, %s\n", first.frames.load(), second.frames.load(),
                first.refused.load(), second.refused.load(), draws ? "both still draw" : "a view HANGS");
    return draws && !first.refused && !second.refused;
}

} // namespace

int main(int count, char** arguments) {
    const bool named = count > 3 && std::strcmp(arguments[2], "--platform") == 0;
    if (!NSApplication::usePlatform(named ? arguments[3] : "headless"))
        return 2;
    return soak(count > 1 ? std::atof(arguments[1]) : 5.0) ? 0 : 1;
}
