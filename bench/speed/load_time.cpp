// load_time LIBRARY: loads a library and unloads it again, once, and prints the nanoseconds.
#include <dlfcn.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto start = std::chrono::steady_clock::now();
  void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr || dlclose(library) != 0) {
    std::fprintf(stderr, "load_time: %s\n", dlerror());
    return 1;
  }
  const std::chrono::nanoseconds time = std::chrono::steady_clock::now() - start;
  std::printf("%lld\n", static_cast<long long>(time.count()));
  return 0;
}
