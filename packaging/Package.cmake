# The Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quarzel-strings)
set(CPACK_PACKAGE_CONTACT "Quarzel Strings contributors <contact@tembrilon.com>")
if(CMAKE_CROSSCOMPILING)
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "string-ensemble synthesizer, plug-in")
    set(programs "The standalone program and the renderer are in the package for amd64 alone.")
else()
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "string-ensemble synthesizer, plug-in and standalone")
    set(programs
"There is a standalone program, too, and an offline renderer of MIDI files.")
endif()
set(CPACK_PACKAGE_DESCRIPTION
"Twelve tone generators shared by all keys, six sections from viola to
contrabass, bow noise, ensemble chorus, phaser, spring and reverb, as in the
string machines of the nineteen-seventies.
.
The package holds the instrument as VST 2.4, VST 3, CLAP and LV2, with its
factory bank and skins.
${programs}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${PROJECT_HOMEPAGE_URL}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(CMAKE_CROSSCOMPILING)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
    # The target's package database is not here. scripts/package checks these versions.
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.35), libgcc-s1, libstdc++6 (>= 12), libxcb1")
else()
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_CURRENT_BINARY_DIR}")
endif()
include(CPack)
