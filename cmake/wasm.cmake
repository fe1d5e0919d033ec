# Toolchain file: builds for WebAssembly with emscripten; 32-bit, one thread, files in memory.
set(CMAKE_C_COMPILER ${CMAKE_CURRENT_LIST_DIR}/wasm/em++)
set(CMAKE_CXX_COMPILER ${CMAKE_CURRENT_LIST_DIR}/wasm/em++)
set(CMAKE_AR /usr/lib/llvm-19/bin/llvm-ar)
set(CMAKE_RANLIB /usr/lib/llvm-19/bin/llvm-ranlib)
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

# Emscripten's own kinds of characters, which it adds to LLVM's headers.
set(libcxx /usr/lib/llvm-19/include/c++/v1)
set(changed ${CMAKE_BINARY_DIR}/libcxx)
file(READ ${libcxx}/__locale text)
string(REPLACE "|| defined(__NetBSD__)" "|| defined(__NetBSD__) || defined(__EMSCRIPTEN__)" text "${text}")
string(REPLACE "elif defined(__NetBSD__)" "elif defined(__EMSCRIPTEN__)" text "${text}")
string(REPLACE "if defined(_LIBCPP_PROVIDES_DEFAULT_RUNE_TABLE)" "if 0" text "${text}")
file(CONFIGURE OUTPUT ${changed}/__locale CONTENT "${text}" @ONLY)

# Exceptions are WebAssembly's own. What binaryen of Debian does not know yet is off.
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions -mcpu=mvp -mmutable-globals -msign-ext -nostdinc++ -isystem ${CMAKE_CURRENT_LIST_DIR}/wasm -isystem ${changed} -isystem ${libcxx}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fwasm-exceptions")
