// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/CubeMapFiles.h>

#include <VX_Platform/Foundation/NSFileManager.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

const vx::CubeMapFace vx::cubeMapFaces[6] = {
    {GL_TEXTURE_CUBE_MAP_NEGATIVE_X, "right"}, {GL_TEXTURE_CUBE_MAP_NEGATIVE_Y, "down"},
    {GL_TEXTURE_CUBE_MAP_NEGATIVE_Z, "back"},  {GL_TEXTURE_CUBE_MAP_POSITIVE_X, "left"},
    {GL_TEXTURE_CUBE_MAP_POSITIVE_Y, "up"},    {GL_TEXTURE_CUBE_MAP_POSITIVE_Z, "front"},
};

namespace {

/// The parts that the six names have in common.
struct Set {
    NSString* directory;
    NSString* stem;
    NSString* extension;

    NSString* byNumber(int face) const {
        return NSString::stringWithFormat("%@/%@_%d.%@", directory, stem, face, extension);
    }
    NSString* byWord(int face) const {
        return NSString::stringWithFormat("%@/%@_%s.%@", directory, stem, vx::cubeMapFaces[face].word,
                                          extension);
    }
};

bool exists(NSString* path) {
    return NSFileManager::defaultManager()->fileExistsAtPath(path);
}

} // namespace

std::array<std::string, 6> vx::findCubeMapFiles(const NSString& path, std::string& why) {
    const NSString* name = path.lastPathComponent();
    const NSMutableArray* pieces = name->componentsSeparatedByString(NSString::stringWithUTF8String("_"));
    if (pieces->count() < 2) {
        why = "its name has no \"_\"";
        return {};
    }
    NSString* directory = path.stringByDeletingLastPathComponent();
    if (directory->length() == 0)
        directory = NSString::stringWithUTF8String(".");
    const Set set{directory, static_cast<NSString*>(pieces->objectAtIndex(0)), path.pathExtension()};
    bool byWord = false;
    for (int face = 0; face < 6; ++face) {
        if (exists(set.byNumber(face)))
            continue;
        byWord = true;
        if (!exists(set.byWord(face))) {
            why = "there is neither " + set.byNumber(face)->string() + " nor " + set.byWord(face)->string();
            return {};
        }
    }
    std::array<std::string, 6> files;
    for (int face = 0; face < 6; ++face)
        files[face] = (byWord ? set.byWord(face) : set.byNumber(face))->string();
    return files;
}
