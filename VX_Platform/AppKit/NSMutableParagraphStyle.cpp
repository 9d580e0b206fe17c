// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSMutableParagraphStyle.h>

// Here, so that the class is known by one name in library and host.
NSMutableParagraphStyle::~NSMutableParagraphStyle() = default;
