// SPDX-License-Identifier: MIT
// To add a scene: copy a folder below scenes/, put its source file into CMakeLists.txt, and here its function
// and its row. Each has a namespace of its own, since they are compiled together. docs/images/gallery has a
// picture of each, which the tests hold against what is drawn:
//
//     gallery --scene NAME --headless docs/images/gallery
#include <examples/gallery/Scenes.h>

// clang-format off
Scene* makeFeedback();
Scene* makeFractal();
Scene* makeInstances();
Scene* makeLitRoom();
Scene* makeParticles();
Scene* makeReflection();
Scene* makePlanet();
Scene* makeShadow();
Scene* makeScripts();
Scene* makeTags();
Scene* makeMultisample();
Scene* makePrimitives();
Scene* makeCalibration();
Scene* makeViews();

namespace {

constexpr SceneEntry kScenes[] = {
    {"fractal", "A Julia set in relief", makeFractal, 6.0},
    {"lit_room", "A lit room through filters", makeLitRoom, 4.0},
    {"feedback", "Two pictures that draw each other", makeFeedback, 3.5, true},
    {"instances", "Ten thousand boxes in one draw", makeInstances, 5.0},
    {"particles", "Particles through a geometry shader", makeParticles, 3.0},
    {"reflection", "A mesh mirrors its surroundings", makeReflection, 4.0},
    {"planet", "A planet from a DDS texture", makePlanet, 5.0},
    {"shadow", "Shadows by a depth texture", makeShadow, 3.0},
    {"scripts", "Six scripts and emoji", makeScripts, 4.0},
    {"tags", "Seven ways to draw a tag", makeTags, 2.0},
    {"multisample", "Multisampling: off and on", makeMultisample, 2.0},
    {"primitives", "Shapes of two dimensions", makePrimitives, 3.0},
    {"calibration", "The calibration picture", makeCalibration, 1.5},
    {"views", "Three views of one scene", makeViews, 1.0, true, 2},
};
// clang-format on

} // namespace

std::span<const SceneEntry> scenes() {
    return kScenes;
}

int sceneNamed(std::string_view name) {
    for (int i = 0; i < static_cast<int>(std::size(kScenes)); ++i)
        if (name == kScenes[i].name)
            return i;
    return -1;
}
