# Fails unless a linked program or library has its hardening options.
# Usage: cmake -DFILE=FILE -DOBJDUMP=objdump -DOPTIMISED=BOOL
# [-DWINDOWS=BOOL] -P check_hardening.cmake
cmake_minimum_required(VERSION 3.25)

# require(LISTING PATTERN WHAT): objdump's output must match.
function(require listing pattern what)
    if(NOT listing MATCHES "${pattern}")
        message(SEND_ERROR "${FILE}: ${what}")
    endif()
endfunction()

execute_process(COMMAND "${OBJDUMP}" -p "${FILE}" OUTPUT_VARIABLE headers
    COMMAND_ERROR_IS_FATAL ANY)
if(FILE MATCHES "\\.(dll|exe|vst3)$" OR WINDOWS)
    set(symbols -t)  # the run-time library is linked statically
    require("${headers}" "HIGH_ENTROPY_VA" "not to be loaded at high addresses")
    require("${headers}" "DYNAMIC_BASE" "not to be loaded at any address")
    require("${headers}" "NX_COMPAT" "data can be executed")
else()
    set(symbols -T)
    require("${headers}" "RELRO" "relocated data stay writable")
    require("${headers}" "\n +FLAGS +0x[0-9a-f]*[89a-f]\n" "addresses of functions stay writable")
    require("${headers}" "STACK[^\n]*\n[^\n]*flags rw-" "the stack can be executed")
endif()
execute_process(COMMAND "${OBJDUMP}" ${symbols} "${FILE}" OUTPUT_VARIABLE listing
    COMMAND_ERROR_IS_FATAL ANY)
require("${listing}" "__stack_chk_fail" "no stack protector")
if(OPTIMISED)
    require("${listing}" "_chk\n" "no checked library calls")
endif()
