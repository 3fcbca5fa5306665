# velko_header_package(TARGET HEADER): lets a target see one header-only package, but nothing else of
# the folder where it is installed: a link in the build tree leads to its headers.
function(velko_header_package target header)
    get_filename_component(package ${header} DIRECTORY)
    find_path(VELKO_${package}_FOLDER ${header}
        PATHS /usr/include /usr/local/include /opt/homebrew/include
        REQUIRED NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    set(window ${PROJECT_BINARY_DIR}/packages/${package})
    file(MAKE_DIRECTORY ${window})
    file(CREATE_LINK ${VELKO_${package}_FOLDER}/${package} ${window}/${package} SYMBOLIC)
    target_include_directories(${target} SYSTEM PRIVATE ${window})
endfunction()
