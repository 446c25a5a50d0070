# Resources: the .rc files are the same on both builds. On Windows they are linked in as they are everywhere; natively
# they are compiled to the .res form, which the stand-in reads from a symbol of the module or from a file of its own.
configure_file(${CMAKE_SOURCE_DIR}/resources/version.h.in ${CMAKE_BINARY_DIR}/resources/version.h @ONLY)
set(resourceInputs ${CMAKE_BINARY_DIR}/resources/version.h ${CMAKE_SOURCE_DIR}/resources/*.rc ${CMAKE_SOURCE_DIR}/resources/*.rh ${CMAKE_SOURCE_DIR}/resources/*.h
    ${CMAKE_SOURCE_DIR}/host/host_resource.h)
if(WIN32)
    enable_language(RC)
    set(CMAKE_RC_COMPILE_OBJECT
        "<CMAKE_RC_COMPILER> -O coff -c 65001 <DEFINES> -I \"${CMAKE_SOURCE_DIR}/resources\" -I \"${CMAKE_BINARY_DIR}/resources\" <SOURCE> <OBJECT>")
else()
    find_program(WINDRES NAMES x86_64-w64-mingw32-windres REQUIRED)
    enable_language(ASM)
endif()

function(compile_native_resources rc res)
    file(GLOB inputs CONFIGURE_DEPENDS ${resourceInputs})
    cmake_path(GET res PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${res}
        COMMAND ${WINDRES} -O res -c 65001 -I ${CMAKE_SOURCE_DIR}/resources -I ${CMAKE_BINARY_DIR}/resources -i ${rc} -o ${res}
        DEPENDS ${rc} ${inputs} VERBATIM)
endfunction()

# Puts the resources into the module or program.
function(add_module_resources target rc)
    cmake_path(ABSOLUTE_PATH rc BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
    if(WIN32)
        file(GLOB inputs CONFIGURE_DEPENDS ${resourceInputs})
        target_sources(${target} PRIVATE ${rc})
        set_source_files_properties(${rc} TARGET_DIRECTORY ${target} PROPERTIES OBJECT_DEPENDS "${inputs}")
        return()
    endif()
    set(res ${CMAKE_CURRENT_BINARY_DIR}/${target}.res)
    compile_native_resources(${rc} ${res})
    set(carrier ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.s)
    file(WRITE ${carrier}
        "    .section .rodata\n"
        "    .global PlatformModuleResources\n    .type PlatformModuleResources, @object\n"
        "    .global PlatformModuleResourcesEnd\n    .type PlatformModuleResourcesEnd, @object\n"
        "    .balign 16\nPlatformModuleResources:\n    .incbin \"${res}\"\nPlatformModuleResourcesEnd:\n    .byte 0\n"
        "    .section .note.GNU-stack,\"\",@progbits\n")
    target_sources(${target} PRIVATE ${carrier})
    set_source_files_properties(${carrier} TARGET_DIRECTORY ${target} PROPERTIES OBJECT_DEPENDS ${res} LANGUAGE ASM)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        # The warnings and sanitizers of the sources beside it mean nothing to an assembler.
        set_source_files_properties(${carrier} TARGET_DIRECTORY ${target} PROPERTIES
            COMPILE_OPTIONS -Wno-unused-command-line-argument)
    endif()
    # The carrier must not be compiled before the .res file is there.
    add_custom_target(${target}_res DEPENDS ${res})
    add_dependencies(${target} ${target}_res)
    # A program's symbols are found by name only when they are exported: these two, for any other would stand in front of
    # those of the modules that the program loads.
    foreach(symbol PlatformModuleResources PlatformModuleResourcesEnd)
        target_link_options(${target} PRIVATE -Wl,--export-dynamic-symbol=${symbol})
    endforeach()
endfunction()

# Builds LANGUAGE/korihvui.dll.mui: resources only.
function(add_language_resources target language rc)
    cmake_path(ABSOLUTE_PATH rc BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
    set(mui ${CMAKE_BINARY_DIR}/${language}/${target}.dll.mui)
    if(WIN32)
        add_library(${target}_${language} MODULE ${rc})
        set_target_properties(${target}_${language} PROPERTIES
            PREFIX "" SUFFIX "" OUTPUT_NAME ${target}.dll.mui LINKER_LANGUAGE CXX
            LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${language})
        file(GLOB inputs CONFIGURE_DEPENDS ${resourceInputs})
        set_source_files_properties(${rc} PROPERTIES OBJECT_DEPENDS "${inputs}")
        # No code and no run-time: the file carries resources alone.
        target_link_options(${target}_${language} PRIVATE
            -nostdlib -s -Wl,--entry=0 -Wl,--dynamicbase -Wl,--nxcompat -Wl,--no-insert-timestamp)
        return()
    endif()
    compile_native_resources(${rc} ${mui})
    add_custom_target(${target}_${language} ALL DEPENDS ${mui})
endfunction()
