// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class VX_GLMainView;

/// The words of the pixel format that views are asked for here, closed by 0.
const unsigned* doctorPixelFormat();

/// Each prints a section of its own.
void printMachine();
void printLibraries();
void printDecoders();
void printFonts();
void printDisplays();

/// Those that can find out that no view runs return what is missing, or nothing.
std::string printPlatform(const char* name);
std::string printOpenGL();
/// Two seconds of a small view; with a path it then writes the calibration picture there.
std::string printRefreshes(const char* picture);

/// Writes the calibration picture, drawn by the view's context. False, with a row that tells why.
bool writeCalibration(VX_GLMainView* view, const char* path);
