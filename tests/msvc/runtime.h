// Included before everything else: what Microsoft's C runtime has but Wine's headers lack, as far as libc++ and Boost need
// it.
#pragma once

#include <ctype.h>
#include <locale.h>
#include <stddef.h>
#include <stdlib.h>
#include <time.h>

// libc++ has a <wchar.h> too, which overloads what is inline in Wine's. So this includes Wine's, by its directory.
#include <../msvcrt/wchar.h>
#define _LIBCPP_WCHAR_H

#define MB_CUR_MAX 1
#define GetExceptionCode _exception_code

extern "C" {
using max_align_t = double;
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
int __cdecl _dupenv_s(char**, size_t*, const char*);
int __cdecl _islower_l(int, _locale_t);
int __cdecl _isupper_l(int, _locale_t);
float __cdecl _strtof_l(const char*, char**, _locale_t);
double __cdecl _strtod_l(const char*, char**, _locale_t);
}

// Macros in Wine's <math.h>, functions in Microsoft's.
template <class T>
bool isnan(T value) {
    return __builtin_isnan(value);
}
template <class T>
bool isinf(T value) {
    return __builtin_isinf(value);
}
template <class T>
bool isfinite(T value) {
    return __builtin_isfinite(value);
}
