# Fails unless a public tool finds nothing wrong with the bundle. Prints "SKIPPED" without the tool.
# Usage: cmake -DTOOL=sord_validate|lv2info -DBUNDLE=FOLDER -DURI=PLUGIN -P check_bundle.cmake
find_program(program ${TOOL})
if(NOT program)
    message("SKIPPED: ${TOOL} is not installed")
    return()
endif()

if(TOOL STREQUAL "sord_validate")
    # With the descriptions of all that the bundle's refer to.
    file(GLOB specifications /usr/lib/lv2/*.lv2/*.ttl)
    list(FILTER specifications EXCLUDE REGEX "/a-[a-z]*\\.lv2/|QuarzelStrings|reasonablesynth")
    file(GLOB files "${BUNDLE}/*.ttl")
    execute_process(COMMAND "${program}" ${specifications} ${files}
        OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT said MATCHES "Found 0 errors" OR said MATCHES "warning|error:")
        message(FATAL_ERROR "${said}")
    endif()
else()
    cmake_path(GET BUNDLE PARENT_PATH folder)
    set(ENV{LV2_PATH} "${folder}:/usr/lib/lv2")
    execute_process(COMMAND "${program}" "${URI}"
        OUTPUT_VARIABLE description ERROR_VARIABLE said RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT said STREQUAL "" OR NOT description MATCHES "Port 45:")
        message(FATAL_ERROR "${said}${description}")
    endif()
endif()
message("${said}")
