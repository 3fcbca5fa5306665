# VELKO_BUILD: the number of commits up to these sources. If it is unknown, as in an archive or a
# shallow clone, the version. It depends on nothing else, so that two builds of one commit are equal.

set(VELKO_BUILD ${PROJECT_VERSION})
find_package(Git QUIET)

# velko_git(RESULT argument...): the answer of git about the sources; empty if it gives none.
function(velko_git result)
    execute_process(COMMAND ${GIT_EXECUTABLE} ${ARGN}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        OUTPUT_VARIABLE answer RESULT_VARIABLE status ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(status EQUAL 0)
        set(${result} "${answer}" PARENT_SCOPE)
    else()
        set(${result} "" PARENT_SCOPE)
    endif()
endfunction()

if(GIT_FOUND)
    # An archive may be inside another repository, whose commits are not ours.
    velko_git(prefix rev-parse --is-inside-work-tree --show-prefix)
    velko_git(shallow rev-parse --is-shallow-repository)
    velko_git(commits rev-list --count HEAD)
    if(prefix STREQUAL "true" AND shallow STREQUAL "false" AND commits)
        set(VELKO_BUILD ${commits})
        # Counted again after each commit.
        velko_git(moves rev-parse --git-path logs/HEAD)
        get_filename_component(moves "${moves}" ABSOLUTE BASE_DIR ${PROJECT_SOURCE_DIR})
        if(EXISTS ${moves})
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${moves})
        endif()
    endif()
endif()
