# Compile options for all targets, and the kinds of target that a folder declares.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT EMSCRIPTEN)  # a module has its memory for itself
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(QUARZEL_SANITIZE "" CACHE STRING "Sanitizers for all targets, e.g. address,undefined or thread")

add_library(quarzel_options INTERFACE)
target_include_directories(quarzel_options INTERFACE "${CMAKE_SOURCE_DIR}")
# No contraction into fused operations, which would change the output of the feedback operators.
target_compile_options(quarzel_options INTERFACE -Wall -Wextra -Werror -ffp-contract=off)
if(NOT WIN32 AND NOT EMSCRIPTEN)
    target_compile_options(quarzel_options INTERFACE -pthread)  # as some libraries ask for it
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    # Several plug-ins in one process must not share our inline statics.
    target_compile_options(quarzel_options INTERFACE -fno-gnu-unique)
endif()
if(WIN32)
    # Musicians' machines lack the compiler's run-time libraries.
    target_link_options(quarzel_options INTERFACE -static)
endif()
if(NOT QUARZEL_SANITIZE AND NOT EMSCRIPTEN)  # sanitizers check the same functions, and more
    target_compile_options(quarzel_options INTERFACE -fstack-protector-strong)
    # Fortification needs optimised code. Distributions set other levels.
    set(optimised "$<NOT:$<CONFIG:Debug>>")
    target_compile_options(quarzel_options INTERFACE
        "$<${optimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    if(WIN32)
        target_link_options(quarzel_options INTERFACE
            -fstack-protector-strong  # for the library that it needs here
            LINKER:--nxcompat,--dynamicbase,--high-entropy-va)
    else()
        target_link_options(quarzel_options INTERFACE LINKER:-z,relro,-z,now)
    endif()
endif()
if(QUARZEL_SANITIZE)
    target_compile_options(quarzel_options INTERFACE -fsanitize=${QUARZEL_SANITIZE}
                                                     -fno-sanitize-recover=all
                                                     -fno-omit-frame-pointer)
    target_link_options(quarzel_options INTERFACE -fsanitize=${QUARZEL_SANITIZE})
endif()

# What most files include. Reading it takes a third of the compiler's time, so it is read once. Builds
# with clang do without, among them that for browsers: they notice a file that forgets an include.
set(QUARZEL_COMMON_HEADERS <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <cstring>
    <exception> <functional> <iterator> <limits> <map> <memory> <optional> <string> <string_view>
    <utility> <vector>)
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

# quarzel_library(NAME [SOUND] SOURCES file... [LINK target...]): a static library of one folder.
# SOUND is for code that computes sound.
function(quarzel_library name)
    cmake_parse_arguments(ARG "SOUND" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC quarzel_options ${ARG_LINK})
    # A precompiled header serves files with the same options.
    set(headers_of quarzel_platform)
    if(ARG_SOUND)
        # Neither option changes a bit of the output: nobody reads the exception flags, and packing
        # their states in pairs makes recursive filters slower.
        target_compile_options(${name} PRIVATE -fno-trapping-math -fno-tree-slp-vectorize)
        set(headers_of quarzel_dsp)
    endif()
    if(name STREQUAL headers_of)
        target_precompile_headers(${name} PRIVATE ${QUARZEL_COMMON_HEADERS})
    else()
        target_precompile_headers(${name} REUSE_FROM ${headers_of})
    endif()
endfunction()

# quarzel_has_wide_vectors(FILE...): for sources with vectors wider than the baseline's.
function(quarzel_has_wide_vectors)
    if(QUARZEL_SANITIZE)
        # Instrumented, the kernels of AVX-512 take a minute to compile. Only tests on a processor
        # that has it would run them.
        set(flags "")
        if(EXISTS /proc/cpuinfo)
            file(STRINGS /proc/cpuinfo flags REGEX "^flags.* avx512_vbmi2( |$)" LIMIT_COUNT 1)
        endif()
        if(NOT flags)
            set_source_files_properties(${ARGN} PROPERTIES
                COMPILE_DEFINITIONS QUARZEL_WITHOUT_AVX512)
        endif()
    endif()
    if(WIN32)
        # The compiler takes the stack to be aligned for them, which it is not on Windows.
        set_source_files_properties(${ARGN} PROPERTIES
            COMPILE_OPTIONS "-Wa,-muse-unaligned-vector-move")
    endif()
endfunction()

# quarzel_program(NAME SOURCES file... [LINK target...]): a program that is delivered.
function(quarzel_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE quarzel_options ${ARG_LINK})
    if(WIN32)
        enable_language(RC)
        target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/platform/program_win32.cpp"
                                       "${CMAKE_SOURCE_DIR}/platform/program_win32.rc")
    endif()
endfunction()

# quarzel_test(NAME SOURCES file... [LINK target...] [LOCK what]): a GoogleTest program. ctest runs
# its cases one by one; those with the same lock do not overlap. A cross build runs the whole
# program through its emulator.
function(quarzel_test name)
    cmake_parse_arguments(ARG "" "LOCK" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES} $<TARGET_OBJECTS:quarzel_own_settings>)
    target_link_libraries(${name} PRIVATE quarzel_options ${ARG_LINK} GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM quarzel_own_settings)
    if(CMAKE_CROSSCOMPILING)
        # Starting the emulator costs more than most cases, so one test runs all of them.
        add_test(NAME ${name} COMMAND ${name})
    else()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
            PROPERTIES RESOURCE_LOCK "${ARG_LOCK}")
    endif()
endfunction()
