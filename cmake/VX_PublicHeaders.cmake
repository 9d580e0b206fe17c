# What is installed and may be included by a host: every header of the tree but those in folders named private and
# in the rooms that are internal as a whole.
file(GLOB_RECURSE VX_PUBLIC_HEADERS RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/VX_OpenGL64/*.h"
    "${PROJECT_SOURCE_DIR}/VX_Platform/*.h"
    "${PROJECT_SOURCE_DIR}/VX_System/*.h")
list(FILTER VX_PUBLIC_HEADERS EXCLUDE REGEX "/private/|^VX_Platform/(backends|drawing)/")
