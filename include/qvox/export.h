/// \file
/// QVOX_API marks what the shared library exports; all else stays hidden in it.
#ifndef QVOX_EXPORT_H
#define QVOX_EXPORT_H

/// \def QVOX_API
/// On a class or function: exported.

#if defined(QVOX_STATIC)
#define QVOX_API
#elif defined(_WIN32)
#if defined(QVOX_BUILDING)
#define QVOX_API __declspec(dllexport)
#else
#define QVOX_API __declspec(dllimport)
#endif
#else
#define QVOX_API __attribute__((visibility("default")))
#endif

#endif
