#ifndef KORVIXSDK_PLATFORM_WINDOWS_WINDOWS_HEADERS_H_
#define KORVIXSDK_PLATFORM_WINDOWS_WINDOWS_HEADERS_H_

/// <windows.h> without its min and max macros and the parts that nobody here uses.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#endif  // KORVIXSDK_PLATFORM_WINDOWS_WINDOWS_HEADERS_H_
