# What ships and where it lies, for `cmake --install` and for every package: on Windows one folder, natively the system's own.
# The target "ship" builds it and nothing else.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
if(WIN32)
    set(moduleFolder .)
    set(documentFolder .)
    set(sampleFolder samples)
else()
    set(moduleFolder libexec/korihvui) # nothing else links these files
    set(documentFolder share/doc/korihost)
    set(sampleFolder share/doc/korihost/examples)
endif()

set(bill ${CMAKE_BINARY_DIR}/korihvui.spdx.json)
set(notices ${CMAKE_BINARY_DIR}/third-party.txt)
add_custom_command(OUTPUT ${bill} ${notices} DEPENDS packaging/bill_of_materials.py VERBATIM
    COMMAND python3 ${CMAKE_SOURCE_DIR}/packaging/bill_of_materials.py ${PROJECT_VERSION} ${KORIHVUI_RELEASED}
            ${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR} ${bill} ${notices})
if(NOT WIN32) # compressed, as the system has them
    set(compressed ${CMAKE_BINARY_DIR}/korihost.1.gz ${CMAKE_BINARY_DIR}/changelog.gz)
    add_custom_command(OUTPUT ${compressed} DEPENDS docs/korihost.1 CHANGELOG.md VERBATIM WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        COMMAND sh -c "gzip -9n <docs/korihost.1 >\"$1\" && gzip -9n <CHANGELOG.md >\"$2\"" gzip ${compressed})
endif()
add_custom_target(ship DEPENDS ${bill} ${notices} ${compressed})
add_dependencies(ship korihvui korihost wlanapi)

# As targets, of which CPack takes the symbols.
install(TARGETS korihvui korihost DESTINATION ${moduleFolder})
install(TARGETS wlanapi RUNTIME DESTINATION ${moduleFolder}/simulated LIBRARY DESTINATION ${moduleFolder}/simulated)
foreach(language ${KORIHVUI_LANGUAGES})
    install(FILES ${CMAKE_BINARY_DIR}/${language}/korihvui.dll.mui DESTINATION ${moduleFolder}/${language})
endforeach()
install(DIRECTORY samples/ DESTINATION ${sampleFolder}
    PATTERN service.lock EXCLUDE PATTERN .gitattributes EXCLUDE PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY docs DESTINATION ${documentFolder} PATTERN korihost.1 EXCLUDE)
install(FILES README.md CHANGELOG.md ${bill} ${notices} DESTINATION ${documentFolder})
if(WIN32)
    install(FILES LICENSE DESTINATION .)
    install(DIRECTORY public DESTINATION include)
    install(FILES $<TARGET_FILE:korihvui>.debug DESTINATION . COMPONENT symbols EXCLUDE_FROM_ALL)
else()
    install(FILES LICENSE DESTINATION ${documentFolder} RENAME copyright)
    install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${documentFolder})
    install(FILES ${CMAKE_BINARY_DIR}/korihost.1.gz DESTINATION share/man/man1)
    # The files of the native build look for one another in their own folder, wherever that is.
    install(TARGETS platform LIBRARY DESTINATION ${moduleFolder})
    set_target_properties(korihost korihvui wlanapi platform PROPERTIES
        BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN;$ORIGIN/simulated;$ORIGIN/..")
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    file(CREATE_LINK ../libexec/korihvui/korihost ${CMAKE_BINARY_DIR}/bin/korihost SYMBOLIC)
    install(FILES ${CMAKE_BINARY_DIR}/bin/korihost DESTINATION bin)
endif()

set(CPACK_PACKAGE_VENDOR Korvane)
set(CPACK_PACKAGE_CONTACT "Korvane <wlan@korvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "host for wireless profiles with CCX settings")
set(CPACK_PACKAGE_DESCRIPTION "korihost checks, shows and changes the CCX settings of wireless profiles in\nfiles, with the profile extension of the maker, over a stand-in for the\nplatform that the extension is made for.")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_NAME korihost)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/simulated)
# For the scripts that pack.
set(CPACK_KORIHVUI_RELEASED ${KORIHVUI_RELEASED})
include(CPack)
