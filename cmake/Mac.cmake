# What every target of a mac/ folder needs: Apple's frameworks, and reference counting by the compiler.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

add_library(velko_mac INTERFACE)
target_compile_options(velko_mac INTERFACE -fobjc-arc)

if(CMAKE_BUILD_TYPE STREQUAL MinSizeRel)
    # Not -Oz alone: the cross compiler takes it for -Os. In functions of the least size, the frame pointer lets
    # two words say how to unwind them, in place of a table of its own for each.
    add_compile_options("SHELL:-Xclang -Oz" -fno-omit-frame-pointer)
    # Nobody asks for a type at run time, and failures are values: an exception of the standard library ends the
    # program with these options as it does without them. Only Apple's frameworks throw what a binding catches.
    add_compile_options(-fno-rtti -fno-exceptions)
    target_compile_options(velko_mac INTERFACE -fexceptions)
endif()
target_link_libraries(velko_mac INTERFACE
    "-framework AppKit"
    "-framework ApplicationServices"
    "-framework Carbon"
    "-framework CoreFoundation"
    "-framework CoreGraphics"
    "-framework CoreServices"
    "-framework Foundation"
    "-framework ServiceManagement"
    "-framework UniformTypeIdentifiers"
    objc)

if(CMAKE_CROSSCOMPILING)
    add_subdirectory(${PROJECT_SOURCE_DIR}/cross/macos ${PROJECT_BINARY_DIR}/cross)
endif()
