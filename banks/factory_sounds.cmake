# Writes family, name and character of the factory sounds as rows of C++, from their document.
# Usage: cmake -DDOCUMENT=presets.md -DOUTPUT=FILE -P factory_sounds.cmake
file(STRINGS "${DOCUMENT}" lines ENCODING UTF-8)
set(rows "")
set(number 0)
foreach(line IN LISTS lines)
    if(line MATCHES "^## (.+)$")
        set(family "${CMAKE_MATCH_1}")
    elseif(line MATCHES "^\\| ([0-9]+) \\| ([^|]+) \\| ([^|]+) \\|")
        set(name "${CMAKE_MATCH_2}")
        set(character "${CMAKE_MATCH_3}")
        if(NOT CMAKE_MATCH_1 EQUAL number)
            message(FATAL_ERROR "${DOCUMENT}: sound ${number} is missing")
        endif()
        math(EXPR number "${number} + 1")
        # Without emphasis and without the marks that only the document explains.
        string(REPLACE "*" "" character "${character}")
        string(REGEX REPLACE "\\. ([vV]|[vV], b below [A-G][0-9]|b below [A-G][0-9])$" ""
               character "${character}")
        string(APPEND rows "    {\"${family}\", \"${name}\", \"${character}\"},\n")
    endif()
endforeach()
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "${rows}" @ONLY)
