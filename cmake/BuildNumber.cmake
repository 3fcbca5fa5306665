# VELKO_BUILD: how many commits the sources have behind them; where that is unknown, as in an archive or a
# shallow clone, the version. Nothing else, so that two builds of one commit are alike.

set(VELKO_BUILD ${PROJECT_VERSION})
find_package(Git QUIET)

# velko_git(RESULT argument...): what git answers about the sources, empty when it doesn't.
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
    # An archive may lie in somebody else's repository, whose commits are not ours.
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
