// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

int main() {
    NSRef<NSAutoreleasePool> pool = NSRef<NSAutoreleasePool>::adopt((new NSAutoreleasePool)->init());
    NSLog("%@", NSString::stringWithFormat("%d", 42));
    return NSString::stringWithFormat("%d", 42)->isEqualToString(NSString::stringWithUTF8String("42")) ? 0
                                                                                                       : 1;
}
