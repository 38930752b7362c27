# Fails if the DLL needs a library that some Windows 10 systems lack.
cmake_minimum_required(VERSION 3.25)
set(allowed ADVAPI32.dll GDI32.dll KERNEL32.dll SHELL32.dll USER32.dll msvcrt.dll ole32.dll)

execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE headers
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${headers}")
if(NOT imports)
    message(FATAL_ERROR "no imports found in ${LIBRARY}")
endif()
foreach(import IN LISTS imports)
    string(REPLACE "DLL Name: " "" import "${import}")
    message(STATUS "${import}")
    if(NOT import IN_LIST allowed)
        message(FATAL_ERROR "imports ${import}")
    endif()
endforeach()
