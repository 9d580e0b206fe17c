# Everything the library stands on. Only GLM is visible in public headers.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(VX_PKG REQUIRED IMPORTED_TARGET
    sdl2 egl epoxy glu x11 x11-xcb xcb xcb-present xext xkbcommon xrandr cairo cairo-xcb pangocairo fontconfig libpng
    libjpeg libtiff-4 libwebp)

add_library(VX_dependencies INTERFACE)
target_link_libraries(VX_dependencies INTERFACE PkgConfig::VX_PKG Threads::Threads)

find_package(GIF REQUIRED)
target_link_libraries(VX_dependencies INTERFACE GIF::GIF)

find_package(glm REQUIRED)

# For host programs in this tree that call GL themselves.
pkg_check_modules(VX_EPOXY REQUIRED IMPORTED_TARGET epoxy)

# For examples/output_screen alone, which keeps its settings in a file.
if(VX_BUILD_EXAMPLES)
    find_package(nlohmann_json REQUIRED)
endif()
