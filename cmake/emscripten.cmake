# Builds WebAssembly with Debian's emscripten.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
# Vectors of four lanes, and exceptions by the processor: every browser with audio worklets of the
# last years has both.
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fwasm-exceptions")
