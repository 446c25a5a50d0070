# Compiles the sources of one folder together: reading the same headers again and again is what building costs here. The
# product itself is compiled file by file, so that each of its files shows that it includes what it needs.
#
# compile_in_units(TARGET [TOGETHER] SOURCES... [ALONE FILES...]): TOGETHER makes one unit of all folders, for a library of which each
# unit would hold a copy. FILES have names of their own that others use too.
function(compile_in_units target)
    cmake_parse_arguments(arg "TOGETHER" "" "ALONE" ${ARGN})
    foreach(source ${arg_UNPARSED_ARGUMENTS})
        cmake_path(GET source FILENAME name)
        if(name IN_LIST arg_ALONE)
            continue()
        endif()
        # The name of the unit is inside what is built, and is the same wherever the sources lie.
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE place)
        cmake_path(RELATIVE_PATH place BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
        cmake_path(GET place PARENT_PATH folder)
        if(arg_TOGETHER)
            set(folder ${target})
        endif()
        string(MAKE_C_IDENTIFIER "${folder}" group)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
