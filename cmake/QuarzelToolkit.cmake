# The target quarzel_toolkit, the view library of the editor: gui/, or an installed VSTGUI 4.12 or
# newer.
set(QUARZEL_VSTGUI "" CACHE PATH
    "Folder of a VSTGUI to use instead of gui/: headers in vstgui/, library in lib/ or itself")

add_library(quarzel_toolkit INTERFACE)
if(NOT QUARZEL_VSTGUI)
    target_link_libraries(quarzel_toolkit INTERFACE quarzel_gui)
    return()
endif()

find_path(QUARZEL_VSTGUI_HEADERS vstgui/vstgui.h REQUIRED NO_DEFAULT_PATH
          PATHS "${QUARZEL_VSTGUI}" "${QUARZEL_VSTGUI}/include" NO_CMAKE_FIND_ROOT_PATH)
find_library(QUARZEL_VSTGUI_LIBRARY vstgui REQUIRED NO_DEFAULT_PATH
             PATHS "${QUARZEL_VSTGUI}" "${QUARZEL_VSTGUI}/lib" NO_CMAKE_FIND_ROOT_PATH)
target_include_directories(quarzel_toolkit SYSTEM INTERFACE "${QUARZEL_VSTGUI_HEADERS}")
# Class layouts depend on both, so they must match the library's build.
target_compile_definitions(quarzel_toolkit INTERFACE VSTGUI_ENABLE_DEPRECATED_METHODS=1
                                                     $<IF:$<CONFIG:Debug>,DEBUG,RELEASE>)
target_link_libraries(quarzel_toolkit INTERFACE "${QUARZEL_VSTGUI_LIBRARY}")
if(WIN32)
    target_link_libraries(quarzel_toolkit INTERFACE d2d1 dwrite windowscodecs shlwapi ole32 imm32
                                                    gdi32 user32)
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(VSTGUI_SYSTEM REQUIRED IMPORTED_TARGET
                      x11 xcb xcb-util xcb-cursor xcb-keysyms xcb-xkb xkbcommon xkbcommon-x11
                      cairo pangocairo pangoft2 fontconfig freetype2 glib-2.0)
    target_link_libraries(quarzel_toolkit INTERFACE PkgConfig::VSTGUI_SYSTEM)
endif()
