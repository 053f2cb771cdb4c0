#pragma once

// Visibility of the boundary's classes. The SDK is one shared library that can be swapped for another one
// with the same symbols; whoever builds such a library defines IPNCSDK_BUILD.
#if defined(_WIN32)
#if defined(IPNCSDK_BUILD)
#define IPNCSDK_API __declspec(dllexport)
#else
#define IPNCSDK_API __declspec(dllimport)
#endif
#else
#define IPNCSDK_API __attribute__((visibility("default")))
#endif
