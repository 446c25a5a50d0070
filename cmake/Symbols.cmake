# What ships carries no symbols. Those of a module are kept beside it, and a debugger finds them by the link in the module.
function(split_symbols target)
    set(file $<TARGET_FILE:${target}>)
    # These tools write the present time into what they write, unless they are told another.
    set(tool ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=${KORIHVUI_EPOCH})
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM WORKING_DIRECTORY $<TARGET_FILE_DIR:${target}>
        COMMAND ${tool} ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
        COMMAND ${tool} ${CMAKE_STRIP} ${file}
        COMMAND ${tool} ${CMAKE_OBJCOPY} --add-gnu-debuglink=$<TARGET_FILE_NAME:${target}>.debug ${file})
endfunction()
