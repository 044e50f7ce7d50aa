#ifndef KORVIXSDK_TESTS_PROCESSES_BARREN_FOLDER_H_
#define KORVIXSDK_TESTS_PROCESSES_BARREN_FOLDER_H_

namespace korvixsdk::test {

/// A folder in which the system lets no one create anything, root included. Windows has none for an
/// administrator, but Wine shows Linux's.
#ifdef _WIN32
constexpr char kBarrenFolder[] = "Z:\\proc";
#else
constexpr char kBarrenFolder[] = "/proc";
#endif

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_BARREN_FOLDER_H_
