// load_time ours|by_hand LIBRARY: loads a library and unloads it again, once, and prints the
// nanoseconds. by_hand expects libcurl and does what the library has to do with it from its loading
// to its unloading: sets its global state up and cleans it up.
#include <curl/curl.h>
#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <string>

namespace {

bool LoadAndUnload(const char* name, bool by_hand) {
  void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return false;
  if (by_hand) {
    const auto init =
        reinterpret_cast<decltype(&curl_global_init)>(dlsym(library, "curl_global_init"));
    const auto cleanup =
        reinterpret_cast<decltype(&curl_global_cleanup)>(dlsym(library, "curl_global_cleanup"));
    if (init == nullptr || cleanup == nullptr || init(CURL_GLOBAL_ALL) != CURLE_OK) return false;
    cleanup();
  }
  return dlclose(library) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const bool by_hand = std::string(argv[1]) == "by_hand";
  const auto start = std::chrono::steady_clock::now();
  if (!LoadAndUnload(argv[2], by_hand)) {
    std::fprintf(stderr, "load_time: %s\n", dlerror());
    return 1;
  }
  const std::chrono::nanoseconds time = std::chrono::steady_clock::now() - start;
  std::printf("%lld\n", static_cast<long long>(time.count()));
  return 0;
}
