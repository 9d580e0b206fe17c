// SPDX-License-Identifier: MIT
// Shows scenes, each a short file of its own below scenes/ with its shader files beside it. Edit a shader
// file while it runs: the picture follows with the next save.
#include <examples/gallery/Film.h>
#include <examples/gallery/Gallery.h>
#include <examples/gallery/SideViews.h>
#include <examples/support/ExampleHost.h>

#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>

namespace {

struct Options : ExampleOptions {
    static constexpr const char* kUsage =
        "[--scene NAME] [--list] [--headless DIR [--frames A-B] [--rate R] [--keys LETTERS] [--overlay]] "
        "[--size WxH] [--display NAME] [--platform NAME] [--fps]";

    int scene = -1;
    bool lists = false;
    bool hasOverlay = false;
    std::string display; ///< the one to be filled from the start
    Film film;

    bool parse(int count, char** words);

private:
    bool takeWord(int count, char** words, int& i);
    bool takeValue(std::string_view word, const char* value);
    bool takeScene(const char* name);
    bool tellUsage(const char* program);
};

bool Options::takeScene(const char* name) {
    scene = sceneNamed(name);
    if (scene < 0)
        std::fprintf(stderr, "There is no scene \"%s\"; --list names them\n", name);
    return scene >= 0;
}

bool Options::takeValue(std::string_view word, const char* value) {
    char rest = 0;
    if (word == "--frames")
        return std::sscanf(value, "%d-%d%c", &film.first, &film.last, &rest) == 2 && film.first >= 0 &&
               film.last >= film.first;
    if (word == "--rate")
        return std::sscanf(value, "%lf%c", &film.rate, &rest) == 1 && film.rate > 0.0;
    (word == "--keys" ? film.keys : word == "--display" ? display : film.folder) = value;
    return *value;
}

bool Options::takeWord(int count, char** words, int& i) {
    const std::string_view word = words[i];
    if (word == "--list")
        return lists = true;
    if (word == "--overlay")
        return hasOverlay = true;
    if (word != "--headless" && word != "--frames" && word != "--rate" && word != "--keys" &&
        word != "--display")
        return take(count, words, i);
    return i + 1 < count && takeValue(word, words[++i]);
}

bool Options::tellUsage(const char* program) {
    std::fprintf(stderr, "usage: %s %s\n", program, kUsage);
    return false;
}

bool Options::parse(int count, char** words) {
    for (int i = 1; i < count; ++i) {
        const bool namesScene = std::string_view(words[i]) == "--scene" && i + 1 < count;
        if (namesScene ? takeScene(words[++i]) : takeWord(count, words, i))
            continue;
        return namesScene ? false : tellUsage(words[0]);
    }
    return film.last < 0 || !film.folder.empty() || tellUsage(words[0]);
}

// What keys and mouse do; the rest is the gallery's, on the thread that draws.
class Visitor {
public:
    Visitor(VX_GLHost& host, Gallery& gallery, int scene, const std::string& display)
        : m_Window(host.window()), m_Gallery(gallery), m_SideViews(host, &gallery), m_Scene(scene) {
        goTo(scene);
        if (!display.empty() && !(m_FillsDisplay = m_Window->fillDisplay(display.c_str())))
            std::fprintf(stderr, "There is no display \"%s\"\n", display.c_str());
        m_Window->setEventHandler([this](NSEvent* event) { return take(event); });
    }

private:
    bool take(const NSEvent* event);
    bool takeKey(unsigned key);
    void fillDisplay(bool fills);
    void goTo(int scene);

    NSWindow* m_Window;
    Gallery& m_Gallery;
    SideViews m_SideViews;
    int m_Scene;
    bool m_FillsDisplay = false;
};

bool Visitor::take(const NSEvent* event) {
    if (event->type() == NSKeyDown)
        return takeKey(event->key());
    if (event->type() == NSMouseMoved || event->type() == NSLeftMouseDragged) {
        const CGPoint at = event->locationInWindow();
        const CGSize size = m_Window->frame().size;
        m_Gallery.moveMouse({at.x / size.width, 1.0 - at.y / size.height});
    }
    return false;
}

bool Visitor::takeKey(unsigned key) {
    const int count = static_cast<int>(scenes().size());
    const int number = key == '0' ? 9 : static_cast<int>(key) - '1';
    if (key == NSEscapeKey)
        return false; // the window's own
    if (number >= 0 && number < std::min(count, 10))
        goTo(number);
    else if (key == NSLeftArrowFunctionKey || key == NSRightArrowFunctionKey)
        goTo((m_Scene + (key == NSLeftArrowFunctionKey ? count - 1 : 1)) % count);
    else if (key == 'f')
        fillDisplay(!m_FillsDisplay);
    else
        m_Gallery.press(key);
    return true;
}

void Visitor::fillDisplay(bool fills) {
    if (!fills)
        m_Window->leaveDisplay();
    m_FillsDisplay = fills && m_Window->fillDisplay(m_Window->screen());
}

void Visitor::goTo(int scene) {
    m_Scene = scene;
    m_Gallery.show(scene);
    const SceneEntry& entry = scenes()[static_cast<std::size_t>(scene)];
    m_Window->setTitle(entry.title);
    m_SideViews.show(entry.sideViews,
                     [this](const NSEvent* event) { return event->type() == NSKeyDown && take(event); });
}

int list() {
    for (const SceneEntry& scene : scenes())
        std::printf("%s\n", scene.name);
    return 0;
}

int film(Options& options) {
    if (options.scene >= 0)
        options.film.scenes = {options.scene};
    else
        for (int i = 0; i < static_cast<int>(scenes().size()); ++i)
            options.film.scenes.push_back(i);
    options.host.stepped = true;
    options.host.headless = !options.host.platform;
    const auto gallery = NSInit(new Gallery(options.film.scenes[0], options.hasOverlay));
    const auto host = VX_GLHost::open(gallery.get(), options.host);
    return host && writeFilm(options.film, *host, *gallery) ? 0 : 1;
}

int showWindow(const Options& options) {
    const int first = std::max(options.scene, 0);
    const auto gallery = NSInit(new Gallery(first, true));
    std::optional<Visitor> visitor;
    return runExample(gallery.get(), options,
                      [&](VX_GLHost& host) { visitor.emplace(host, *gallery, first, options.display); });
}

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    Options options;
    if (!options.parse(count, words))
        return 2;
    if (options.lists)
        return list();
    return options.film.folder.empty() ? showWindow(options) : film(options);
}
