// SPDX-License-Identifier: MIT
#include <examples/gallery/Film.h>
#include <examples/gallery/SideViews.h>

#include <VX_Platform/AppKit/NSApplication.h>

#include <cmath>
#include <cstdio>
#include <filesystem>

namespace {

std::string numbered(const std::string& name, int frame) {
    char number[16];
    std::snprintf(number, sizeof number, "_%05d", frame);
    return name + number;
}

bool writeScene(const Film& film, const SceneEntry& scene, VX_GLHost& host) {
    const bool isPicture = film.last < 0;
    const int last = isPicture ? static_cast<int>(std::lround(scene.pictureTime * film.rate)) : film.last;
    const int first = isPicture ? last : film.first;
    for (int i = scene.remembers ? 0 : first; i < first; ++i)
        if (!host.view()->StepFrame(i / film.rate))
            return false;
    for (int i = first; i <= last; ++i) {
        const std::string name = isPicture ? scene.name : numbered(scene.name, i);
        const std::string path = film.folder + "/" + name + ".png";
        if (!host.view()->StepFrame(i / film.rate, path.c_str()))
            return false;
        if (isPicture)
            std::printf("%s written\n", path.c_str());
    }
    if (!isPicture)
        std::printf("%s/%s_%05d.png to %05d written\n", film.folder.c_str(), scene.name, first, last);
    return true;
}

} // namespace

bool writeFilm(const Film& film, VX_GLHost& host, Gallery& gallery) {
    std::error_code failure; // a folder that cannot be had shows at the first frame
    std::filesystem::create_directories(film.folder, failure);
    NSApplication::sharedApplication()->runStep(0.0); // prepares the view
    SideViews sideViews(host, &gallery);
    for (const int number : film.scenes) {
        gallery.show(number);
        for (const char key : film.keys)
            gallery.press(static_cast<unsigned char>(key));
        const SceneEntry& scene = scenes()[static_cast<std::size_t>(number)];
        sideViews.show(scene.sideViews);
        NSApplication::sharedApplication()->runStep(0.0);
        if (!writeScene(film, scene, host))
            return false;
    }
    sideViews.show(0);
    return true;
}
