# What all targets share: language, warnings, exact floating point, output folders.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Optimised builds use -O2: -O3 gains nothing measurable here and costs build time.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

# One layout for the build tree and for an installation: the program finds the host's library and the
# plug-in relative to itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

find_program(TQ4X_CCACHE ccache)
if(TQ4X_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${TQ4X_CCACHE}")
endif()

add_library(tq4x_flags INTERFACE)
# The files bind bits: no fused operations, no reordering.
target_compile_options(tq4x_flags INTERFACE -ffp-contract=off -fno-fast-math)
target_compile_options(tq4x_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tq4x_flags INTERFACE -Wduplicated-cond -Wlogical-op)
    # GCC 12 sees null dereferences and uninitialised members inside the standard library's own code when it inlines.
    target_compile_options(tq4x_flags INTERFACE -Wno-null-dereference
        $<$<CONFIG:Release>:-Wno-restrict -Wno-maybe-uninitialized>)
endif()
if(TQ4X_WARNINGS_AS_ERRORS)
    target_compile_options(tq4x_flags INTERFACE -Werror)
endif()
if(WIN32)
    # Tests are built once and run once: what counts is the time of both. The product is as it is shipped.
    target_compile_options(tq4x_flags INTERFACE "$<$<BOOL:$<TARGET_PROPERTY:TQ4X_IS_TEST>>:-O0>")
endif()
if(TQ4X_SANITIZE)
    # What is tested is instrumented; the test code itself is not, which halves the time of the whole build.
    set(isProduct "$<NOT:$<BOOL:$<TARGET_PROPERTY:TQ4X_IS_TEST>>>")
    target_compile_options(tq4x_flags INTERFACE -g1
        "$<${isProduct}:-O1;-fsanitize=address,undefined;-fno-sanitize-recover=all;-fno-omit-frame-pointer>")
    target_link_options(tq4x_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TQ4X_BUILD_FUZZ)
    # Optimised, with the assertions.
    target_compile_options(tq4x_flags INTERFACE -UNDEBUG -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=all)
    target_link_options(tq4x_flags INTERFACE -fsanitize=address,undefined)
endif()

# All sources of a folder and of its folders belong to its target: the tree is the architecture.
function(tq4x_collect_sources outVariable)
    set(found)
    foreach(folder IN LISTS ARGN)
        file(GLOB_RECURSE here CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
        list(APPEND found ${here})
    endforeach()
    set(${outVariable} ${found} PARENT_SCOPE)
endfunction()

# What the operating systems answer differently has a source file for each of them.
function(tq4x_keep_platform_sources listVariable)
    if(WIN32)
        list(FILTER ${listVariable} EXCLUDE REGEX "Posix\\.cpp$")
    else()
        list(FILTER ${listVariable} EXCLUDE REGEX "Windows\\.cpp$")
    endif()
    set(${listVariable} ${${listVariable}} PARENT_SCOPE)
endfunction()

# A header-only library of the building machine for a build that sees none of its folders: `target` includes
# the one folder of it and nothing beside it.
function(tq4x_use_headers target folder header)
    find_path(TQ4X_${folder}_HEADERS "${folder}/${header}" PATHS /usr/include REQUIRED NO_DEFAULT_PATH
        NO_CMAKE_FIND_ROOT_PATH)
    set(includes "${CMAKE_BINARY_DIR}/headers")
    file(MAKE_DIRECTORY "${includes}")
    file(CREATE_LINK "${TQ4X_${folder}_HEADERS}/${folder}" "${includes}/${folder}" SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} INTERFACE "${includes}")
endfunction()
