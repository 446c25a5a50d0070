# Header-only libraries from the distribution. A cross build must not see the whole system include folder, so the few
# that are in use are linked into a folder of their own.
add_library(header_libraries INTERFACE)
if(WIN32)
    set(headerFolder ${CMAKE_BINARY_DIR}/headers)
    file(MAKE_DIRECTORY ${headerFolder})
    foreach(library CLI dtl nlohmann)
        if(NOT EXISTS /usr/include/${library})
            message(FATAL_ERROR "the header library ${library} is missing: install libcli11-dev, libdtl-dev and nlohmann-json3-dev")
        endif()
        file(CREATE_LINK /usr/include/${library} ${headerFolder}/${library} SYMBOLIC)
    endforeach()
    target_include_directories(header_libraries SYSTEM INTERFACE ${headerFolder})
endif()
