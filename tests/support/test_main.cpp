#include <gtest/gtest.h>

#include <iostream>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

/// GoogleTest's own, which in addition fails where a test is disabled: nothing would ever run it.
int main(int argc, char** argv) {
#if defined(_WIN32)
  // CTest reads the list of tests, on a system whose lines end without a carriage return.
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  testing::InitGoogleTest(&argc, argv);
  const int status = RUN_ALL_TESTS();
  const int disabled = testing::UnitTest::GetInstance()->disabled_test_count();
  if (disabled == 0) return status;
  std::cerr << disabled << " tests are disabled, and nothing ever runs them\n";
  return 1;
}
