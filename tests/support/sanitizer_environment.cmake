# What every test finds in its environment where the build has a sanitizer. It goes to the programs
# that a test starts, too.
set(korvixsdk_test_environment)
if(KORVIXSDK_SANITIZER)
  # Suppressions name functions, and only with this program the runtime knows them.
  find_program(LLVM_SYMBOLIZER llvm-symbolizer REQUIRED)
  set(symbolizer external_symbolizer_path=${LLVM_SYMBOLIZER})
  list(JOIN korvixsdk_sanitizer_flags " " flags)
  set(korvixsdk_test_environment
      # For tests that build a host.
      CXX=${CMAKE_CXX_COMPILER}
      CXXFLAGS=${flags}
      "ASAN_OPTIONS=${symbolizer}:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1:strict_string_checks=1"
      "LSAN_OPTIONS=suppressions='${CMAKE_CURRENT_LIST_DIR}/lsan.supp':print_suppressions=0"
      "UBSAN_OPTIONS=${symbolizer}:print_stacktrace=1"
      "TSAN_OPTIONS=${symbolizer}:history_size=7:second_deadlock_stack=1")
endif()
