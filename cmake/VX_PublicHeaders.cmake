# What is installed and may be included by a host: every header of the tree but those below.
file(GLOB_RECURSE VX_PUBLIC_HEADERS RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/VX_OpenGL64/*.h"
    "${PROJECT_SOURCE_DIR}/VX_Platform/*.h"
    "${PROJECT_SOURCE_DIR}/VX_System/*.h")
list(FILTER VX_PUBLIC_HEADERS EXCLUDE REGEX "^VX_Platform/backends/")
set(VX_INTERNAL_HEADERS
    VX_OpenGL64/meshes/OwnedList.h
    VX_OpenGL64/meshes/VertexLayout.h
    VX_OpenGL64/meshes/XKeyword.h
    VX_Platform/CoreVideo/RefreshPacer.h
    VX_Platform/Foundation/TextFormat.h
    VX_Platform/OpenGL/DriverMessages.h
    VX_Platform/OpenGL/ShareGroup.h
    VX_System/LexCursor.h
    VX_System/NumberText.h)
list(REMOVE_ITEM VX_PUBLIC_HEADERS ${VX_INTERNAL_HEADERS})
