# Warnings, hardening and sanitizers: properties of one interface target that everything of ours links.
add_library(korihvui_options INTERFACE)
target_compile_options(korihvui_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -fno-strict-aliasing
    # The same sources give the same files wherever they lie.
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
if(KORIHVUI_SANITIZE)
    target_compile_options(korihvui_options INTERFACE
        -fsanitize=${KORIHVUI_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(korihvui_options INTERFACE -fsanitize=${KORIHVUI_SANITIZE})
endif()

add_library(korihvui_platform INTERFACE)
add_library(static_runtime INTERFACE)
if(WIN32)
    target_compile_definitions(korihvui_options INTERFACE
        UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 __USE_MINGW_ANSI_STDIO=0 _FILE_OFFSET_BITS=64)
    # The DLL carries its run-time inside and is loaded wherever the loader pleases, its data never as code.
    target_link_options(static_runtime INTERFACE
        -static -static-libgcc -static-libstdc++ -Wl,--dynamicbase -Wl,--nxcompat -Wl,--no-insert-timestamp)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        target_link_options(static_runtime INTERFACE -Wl,--high-entropy-va)
    else()
        # The exported names stay as the platform looks them up, without the calling convention's decoration.
        target_link_options(static_runtime INTERFACE -Wl,--kill-at -Wl,--enable-stdcall-fixup)
    endif()
    target_link_libraries(korihvui_platform INTERFACE ole32 oleaut32 uuid rpcrt4 advapi32 user32 kernel32)
else()
    target_link_libraries(korihvui_platform INTERFACE platform)
endif()
