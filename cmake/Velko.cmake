# How every target of Velko is built: language, warnings, sanitizers, and the borders between rooms.

include(${CMAKE_CURRENT_LIST_DIR}/BuildNumber.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/HeaderPackages.cmake)

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(VELKO_HOST_ROOMS "Build the simulator and the playground" ON)
option(VELKO_TESTS "Build the tests and the benchmarks" ON)
set(VELKO_UNITY_BATCH 9 CACHE STRING "How many sources of a target are compiled as one; 1 for each by itself")
set(VELKO_DOCUMENTATION "" CACHE STRING "The address of the documentation that the Help menu opens")
set(VELKO_CHANNEL development CACHE STRING "Where this build goes: development, beta or release")
set(VELKO_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")

add_library(velko_options INTERFACE)
target_compile_options(velko_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 gives false alarms in the standard library's own code after inlining: overlapping copies in
    # string concatenation (its bug 105651), and moved-from optionals that it takes for uninitialised.
    target_compile_options(velko_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(VELKO_SANITIZE)
    target_compile_options(velko_options INTERFACE
        -fsanitize=${VELKO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(velko_options INTERFACE -fsanitize=${VELKO_SANITIZE})
endif()

# velko_unity(TARGET): compiles several sources of a target as one. A compiler spends most of its time on the
# headers of the standard library, which are then read once for all of them. So a name in an unnamed namespace
# must be unique in the target.
function(velko_unity target)
    if(VELKO_UNITY_BATCH GREATER 1)
        set_target_properties(${target} PROPERTIES
            UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${VELKO_UNITY_BATCH})
    endif()
endfunction()

# velko_room(NAME SOURCES file... [DEPENDS room...])
#
# A room sees only itself and the rooms that it names. The headers of each room are in a folder with a
# link to that room alone, so a wrong #include does not compile.
function(velko_room name)
    cmake_parse_arguments(ROOM "" "" "SOURCES;DEPENDS" ${ARGN})
    set(window ${PROJECT_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${window})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${name} ${window}/${name} SYMBOLIC)
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_include_directories(${name} PUBLIC ${window})
    target_link_libraries(${name} PUBLIC ${ROOM_DEPENDS} PRIVATE velko_options)
    # When the process ends, other threads may still be reading apps that hang. So nothing that
    # they use may be freed.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wexit-time-destructors>)
    velko_unity(${name})
endfunction()
