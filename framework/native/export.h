#pragma once

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
