// SPDX-License-Identifier: MIT
// What the toolkit stands on, which is there without a platform.
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/VX_Libraries.h>

namespace {

constexpr double kFontSize = 38.0;

std::string nameOf(const VX_Library& library) {
    if (library.name.empty())
        return "VX_OpenGL64";
    return library.version.empty() ? library.name : library.name + " " + library.version;
}

void printFont(const char* name, const char* use) {
    const NSFont* font = NSFont::fontWithName(NSString::stringWithUTF8String(name), kFontSize);
    if (!font) {
        printRow(name, textOf("MISSING: no font stands in for it (%s)", use));
        return;
    }
    const NSString* file = font->fileName();
    printRow(name, textOf("%s, %s (%s)", font->familyName()->UTF8String(),
                          file ? file->UTF8String() : "no file told", use));
}

} // namespace

void printLibraries() {
    printSection("Libraries");
    printRow("this one", nameOf({"", "VX_OpenGL64", VX_GetVersion()}));
    for (const VX_Library& library : VX_GetLibraries())
        printRow(library.purpose, nameOf(library));
    printRow("GL entry points", "libepoxy " DOCTOR_EPOXY_VERSION " when this was built");
}

void printDecoders() {
    printSection("Picture files");
    for (const VX_Library& decoder : VX_GetPictureDecoders())
        printRow(decoder.purpose, nameOf(decoder));
}

void printFonts() {
    printSection("Fonts");
    printFont("Arial Black", "texts and the calibration picture, where the host names none");
    printFont("Sans", "alerts");
}
