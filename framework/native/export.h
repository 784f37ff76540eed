#pragma once

// Without C++20 a compiler says this one line and stops: it looks for a header of this name.
#if __cplusplus < 202002L && !(defined(_MSVC_LANG) && _MSVC_LANG >= 202002L)
#define LORV_LANGUAGE <Comm_LORV needs C++20: compile with -std=c++20>
#include LORV_LANGUAGE
#endif

// Marks what the shared library offers to its users. Empty where the code is linked as an archive.
#if defined(COMM_LORV_STATIC)
#define COMM_LORV_API
#elif defined(_WIN32)
#if defined(COMM_LORV_BUILDING)
#define COMM_LORV_API __declspec(dllexport)
#else
#define COMM_LORV_API __declspec(dllimport)
#endif
#else
#define COMM_LORV_API __attribute__((visibility("default")))
#endif
