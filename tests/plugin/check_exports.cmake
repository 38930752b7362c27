# Fails unless LIBRARY exports exactly its entry points, which are given in order, separated by |.
# Usage: cmake -DLIBRARY=FILE -DENTRY_POINTS=NAMES -DNM=nm -DOBJDUMP=objdump
# [-DWINDOWS=BOOL] -P check_exports.cmake
if(LIBRARY MATCHES "\\.(dll|vst3)$" OR WINDOWS)
    set(lister "${OBJDUMP}" -p)
    set(heading ".*\\[Ordinal/Name Pointer\\] Table")
    # Newer versions print the ordinal and a hint before the name.
    set(symbol "\n\t\\[ *[0-9]+\\] (\\+base\\[ *[0-9]+\\] +[0-9a-f]+ )?([^\n ]+)")
else()
    set(lister "${NM}" -D --defined-only)
    set(symbol "[0-9a-f]+ ([A-Za-z]) ([^\n]+)")
endif()
execute_process(COMMAND ${lister} "${LIBRARY}" OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)

if(heading)
    string(REGEX REPLACE "${heading}" "" listing "${listing}")
endif()
string(REGEX MATCHALL "${symbol}" lines "${listing}")
set(exports "")
foreach(line IN LISTS lines)
    string(REGEX REPLACE "${symbol}" "\\2" name "${line}")
    list(APPEND exports "${name}")
endforeach()
list(SORT exports)
string(REPLACE "|" ";" expected "${ENTRY_POINTS}")
if(NOT exports STREQUAL expected)
    message(FATAL_ERROR "Exported: ${exports}")
endif()
