// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSScreen.h>

#include <string>
#include <vector>

/// The displays that are on now, a line each: number, name, size and place, rate and identifier.
std::vector<std::string> displayLines();
/// The display of that number, from 1, or of that name; null where there is none.
NSRef<NSScreen> displayOfNumber(int number);
NSRef<NSScreen> displayOfName(const std::string& name);
/// Whether the middle of the rectangle is on a display.
bool isOnADisplay(CGRect rect);

std::string nameOf(const NSScreen* display);
std::string sizeOf(const NSScreen* display);
