// SPDX-License-Identifier: MIT
// Shows pictures of any kind, DDS files, cube map sets, a text by each of the five ways to render it, and the
// calibration picture, side by side. What cannot be shown says why in one line. Q or Escape ends.
#include <examples/pictures/Sheet.h>
#include <examples/support/ExampleHost.h>

#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <cstdio>
#include <string_view>

namespace {

struct Options : ExampleOptions {
    Items items;
    const char* font = nullptr;

    bool takeItem(int count, char** words, int& i);
};

bool Options::takeItem(int count, char** words, int& i) {
    const std::string_view word = words[i];
    const char* value = i + 1 < count ? words[i + 1] : nullptr;
    if (word == "--pattern") {
        items.push_back(makePatternItem(640, 480));
        return true;
    }
    if (!word.starts_with('-')) {
        items.push_back(makeFileItem(words[i]));
        return true;
    }
    if (!value || (word != "--font" && word != "--text" && word != "--cube" && word != "--loaders"))
        return false;
    ++i;
    if (word == "--font")
        font = value;
    else if (word == "--text")
        addTextItems(items, value, font);
    else if (word == "--cube")
        items.push_back(makeCubeMapItem(value));
    else
        addLoaderItems(items, value);
    return true;
}

bool parse(int count, char** words, Options& options) {
    for (int i = 1; i < count; ++i)
        if (!options.takeItem(count, words, i) && !options.take(count, words, i))
            return false;
    return !options.items.empty();
}

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    Options options;
    options.host.title = "Pictures";
    options.host.width = 1280;
    options.host.height = 720;
    if (!parse(count, words, options)) {
        std::fprintf(stderr,
                     "usage: %s [FILE...] [--cube FACE-FILE] [--loaders FILE] [--font NAME] [--text TEXT] "
                     "[--pattern] %s\n",
                     words[0], ExampleOptions::kUsage);
        return 2;
    }
    const auto sheet = NSInit(new Sheet(std::move(options.items)));
    const int status = runExample(sheet.get(), options, [&](VX_GLHost& host) {
        host.window()->setEventHandler([&](NSEvent* event) {
            const bool ends = event->type() == NSKeyDown && event->key() == 'q';
            if (ends)
                host.window()->performClose();
            return ends;
        });
    });
    return sheet->hasShown() ? status : 1;
}
