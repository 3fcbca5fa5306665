# What every target of a mac/ folder needs: Apple's frameworks, and reference counting by the compiler.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

add_library(velko_mac INTERFACE)
target_compile_options(velko_mac INTERFACE -fobjc-arc)
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
