# Warnings and sanitizers for our own targets; none of it reaches a consumer.
# Without restrict: g++ 12 sees it broken inside std::string, where it is not. Nor subobject-linkage where sources are
# compiled several at a time: it takes them for headers.
add_library(VX_compile_options INTERFACE)
target_compile_options(VX_compile_options INTERFACE
    -Wall -Wextra -Wnon-virtual-dtor -Wsuggest-override -Wzero-as-null-pointer-constant -Wno-unused-parameter
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${VX_UNITY}>>:-Wno-subobject-linkage>
    $<$<BOOL:${VX_WARNINGS_AS_ERRORS}>:-Werror>)

if(VX_SANITIZE)
    add_compile_options(-fsanitize=${VX_SANITIZE} -fno-omit-frame-pointer)
    # Quicker to build, and enough for a report with file and line.
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
    add_link_options(-fsanitize=${VX_SANITIZE})
    if(VX_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
