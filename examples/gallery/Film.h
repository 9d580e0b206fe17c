// SPDX-License-Identifier: MIT
#pragma once

#include <examples/gallery/Gallery.h>

#include <VX_OpenGL64/host/VX_GLHost.h>

#include <string>
#include <vector>

/// What is written to files, without waiting for any display.
struct Film {
    std::string folder;
    /// Places in `scenes`.
    std::vector<int> scenes;
    /// Numbered frames, or with -1 each scene's picture alone.
    int first = -1;
    int last = -1;
    /// Pressed in each scene before its first frame.
    std::string keys;
    /// Frames a second.
    double rate = 60.0;
};

/// Draws and writes it; `host` is stepped and shows `gallery`. The same frame is the same file in every film
/// of that rate and size. False, with a line in the log, where a file cannot be written.
bool writeFilm(const Film& film, VX_GLHost& host, Gallery& gallery);
