# Toolchain file: the dialect and the ABI of Microsoft's compiler, as clang-cl implements them. The C++ library is libc++, the
# headers of the C runtime and the system are Wine's. It only compiles; there is nothing to link with.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_C_COMPILER clang-cl-19)
set(CMAKE_CXX_COMPILER clang-cl-19)
set(CMAKE_RC_COMPILER llvm-rc-19)
set(CMAKE_LINKER lld-link-19)
set(CMAKE_AR llvm-lib-19)
set(CMAKE_MT llvm-mt-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(wine /usr/include/wine/wine)
foreach(folder /usr/lib/llvm-19/include/c++/v1 ${wine}/msvcrt ${wine}/windows ${CMAKE_CURRENT_LIST_DIR})
    string(APPEND CMAKE_CXX_FLAGS_INIT " /clang:-isystem${folder}")
endforeach()
# Wine's headers: its own character type off, and three inline functions that clang has built in out of the way.
string(APPEND CMAKE_CXX_FLAGS_INIT " --target=x86_64-pc-windows-msvc19.40 /FI${CMAKE_CURRENT_LIST_DIR}/runtime.h"
    " -D_LIBCPP_NO_VCRUNTIME -D_UCRT -DWINE_UNICODE_NATIVE -D_InterlockedCompareExchange128=wine_compare_exchange_128"
    " -D__cpuid=wine_cpuid -D__cpuidex=wine_cpuidex")
# llvm-rc takes the headers that it includes from here.
set(CMAKE_RC_FLAGS_INIT "/I ${wine}/windows")
