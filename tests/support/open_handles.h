#ifndef KORVIXSDK_TESTS_SUPPORT_OPEN_HANDLES_H_
#define KORVIXSDK_TESTS_SUPPORT_OPEN_HANDLES_H_

namespace korvixsdk::test {

/// How many handles (Windows) or descriptors (Linux) this process has open.
long OpenHandles();

/// The lowest count of some tenths of a second, in which a server in another thread closes what it
/// still has open.
long OpenHandlesAtRest();

/// Waits until no more than `limit` are open: what this process has leaked never closes, what a
/// server in another thread is still closing does. False when it has waited long enough.
bool OpenHandlesFallTo(long limit);

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_OPEN_HANDLES_H_
