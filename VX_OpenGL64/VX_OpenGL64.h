// SPDX-License-Identifier: MIT
#pragma once

// Everything a host may use, in one include.
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSResponder.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSFileManager.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSNotificationQueue.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSRecursiveLock.h>
#include <VX_Platform/Foundation/NSRunLoop.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <VX_Platform/OpenGL/CGL.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>
#include <VX_Platform/VX_Export.h>
