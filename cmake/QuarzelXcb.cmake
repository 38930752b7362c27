# The target quarzel_xcb: libxcb to link with.
#
# A cross build needs no libxcb of its target: headers are the same for every processor, and a stub
# with the functions of this machine's library and the real soname satisfies the linker. Tests
# run with the stub, too: xcb_connection_has_error says that there is no display.
if(NOT CMAKE_CROSSCOMPILING)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
    add_library(quarzel_xcb INTERFACE)
    target_link_libraries(quarzel_xcb INTERFACE PkgConfig::XCB)
    return()
endif()

find_path(QUARZEL_XCB_HEADERS xcb/xcb.h REQUIRED NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include DOC "Folder of xcb/xcb.h")
find_library(QUARZEL_NATIVE_XCB xcb REQUIRED NO_CMAKE_FIND_ROOT_PATH
             PATHS /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu
             DOC "This machine's libxcb, which names the functions of the stub")
execute_process(COMMAND "${CMAKE_READELF}" --dyn-syms --wide "${QUARZEL_NATIVE_XCB}"
                OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "FUNC +GLOBAL +DEFAULT +[0-9]+ xcb_[a-z0-9_]+" functions "${symbols}")
list(TRANSFORM functions REPLACE ".* " "")
if(NOT functions)
    message(FATAL_ERROR "${QUARZEL_NATIVE_XCB} names no functions")
endif()
list(JOIN functions "() { return 1; }\nextern \"C\" long " stub)
file(CONFIGURE OUTPUT xcb_stub.cpp CONTENT "extern \"C\" long ${stub}() { return 1; }\n" @ONLY)
add_library(quarzel_xcb SHARED "${CMAKE_CURRENT_BINARY_DIR}/xcb_stub.cpp")
set_target_properties(quarzel_xcb PROPERTIES OUTPUT_NAME xcb SOVERSION 1
                      CXX_VISIBILITY_PRESET default)
target_include_directories(quarzel_xcb SYSTEM INTERFACE "${QUARZEL_XCB_HEADERS}")
