#ifndef KORVIXSDK_BENCH_SPEED_REQUIRE_H_
#define KORVIXSDK_BENCH_SPEED_REQUIRE_H_

#include <cstdio>
#include <cstdlib>
#include <string>

namespace speed {

/// Ends the program loudly: the time of a wrong answer is worth nothing.
[[noreturn]] inline void Fail(const char* what) {
  std::fprintf(stderr, "wrong answer, nothing is measured: %s\n", what);
  std::exit(1);
}
[[noreturn]] inline void Fail(const std::string& what) { Fail(what.c_str()); }

/// With a plain text for what is timed, so that nothing is put together where all is well.
inline void Require(bool holds, const char* what) {
  if (!holds) Fail(what);
}
inline void Require(bool holds, const std::string& what) { Require(holds, what.c_str()); }

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_REQUIRE_H_
