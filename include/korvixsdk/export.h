#ifndef KORVIXSDK_EXPORT_H_
#define KORVIXSDK_EXPORT_H_

/// \file
/// \brief `KORVIXSDK_API`, which marks the operations that the dynamic library exports.
///
/// A host does not have to define anything. The library's own build defines `KORVIXSDK_BUILDING`;
/// programs that link the library's objects directly (its unit tests) define `KORVIXSDK_STATIC`.

/// \def KORVIXSDK_API
/// Marks every operation that the library exports.
#if defined(KORVIXSDK_STATIC)
#define KORVIXSDK_API
#elif defined(_WIN32)
#if defined(KORVIXSDK_BUILDING)
#define KORVIXSDK_API __declspec(dllexport)
#else
#define KORVIXSDK_API __declspec(dllimport)
#endif
#else
#define KORVIXSDK_API __attribute__((visibility("default")))
#endif

#endif  // KORVIXSDK_EXPORT_H_
