# WebAssembly, built on Debian by its packages emscripten and node-acorn.
#
# Vectors of two doubles (-msimd128; Eigen writes them with the intrinsics of SSE, which the compiler translates), and
# exceptions as the browser's own. Every browser since 2023 has both.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

set(CMAKE_C_FLAGS_INIT "-msimd128 -fwasm-exceptions")
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fwasm-exceptions")
