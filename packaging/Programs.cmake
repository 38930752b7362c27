# Install rules of the programs: their libraries, links, manual pages and places in menus.

set(programs quarzel quarzel-render quarzel-skin)
# Systems disagree on the versions of these libraries, which are small, so they come along.
set_target_properties(quarzel quarzel-render PROPERTIES INSTALL_RPATH "$ORIGIN/lib")
install(TARGETS ${programs} RUNTIME_DEPENDENCY_SET needed RUNTIME DESTINATION ${folder})
install(RUNTIME_DEPENDENCY_SET needed
        PRE_INCLUDE_REGEXES "^lib(rtaudio|rtmidi|ebur128)\\.so" PRE_EXCLUDE_REGEXES .
        DESTINATION ${folder}/lib)
foreach(program IN LISTS programs)
    install_link(bin ${program})
endforeach()

# The manual pages are made from the programs' own help.
find_program(QUARZEL_HELP2MAN help2man REQUIRED
             DOC "Makes manual pages (Debian package help2man)")
execute_process(COMMAND date --utc -d "${QUARZEL_RELEASE_DATE}" +%s
                OUTPUT_VARIABLE release_seconds OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
foreach(program IN LISTS programs)
    set(page "${CMAKE_CURRENT_BINARY_DIR}/${program}.1")
    set(additions "${CMAKE_CURRENT_SOURCE_DIR}/linux/${program}.h2m")
    add_custom_command(
        OUTPUT "${page}.gz"
        COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=${release_seconds}
                "${QUARZEL_HELP2MAN}" --no-info "--source=Quarzel Strings"
                "--include=${additions}" "--output=${page}" $<TARGET_FILE:${program}>
        COMMAND gzip -9nf "${page}"
        DEPENDS ${program} "${additions}"
        COMMENT "Making the manual page of ${program}"
        VERBATIM)
    list(APPEND pages "${page}.gz")
endforeach()
add_custom_target(manual_pages ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION share/man/man1)

set(metainfo com.tembrilon.quarzel.metainfo.xml)
configure_file(linux/${metainfo} ${metainfo} @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${metainfo}" DESTINATION share/metainfo)
install(FILES linux/quarzel.desktop DESTINATION share/applications)
install(FILES linux/quarzel.svg DESTINATION share/icons/hicolor/scalable/apps)
# The archive's install.sh adds them to the user's menu.
install(FILES linux/quarzel.desktop linux/quarzel.svg DESTINATION menu ${for_archive})
