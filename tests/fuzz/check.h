#ifndef KORVIXSDK_TESTS_FUZZ_CHECK_H_
#define KORVIXSDK_TESTS_FUZZ_CHECK_H_

#include <cstdio>
#include <cstdlib>

namespace korvixsdk::test {

/// Ends the program when `claim` does not hold, on which a fuzzer keeps the input and a replay
/// fails.
inline void Check(bool holds, const char* claim) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", claim);
  std::abort();
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FUZZ_CHECK_H_
