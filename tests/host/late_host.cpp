// late_host SERVER FOLDER MODULE: loads the module, makes a request, and makes another one in an
// exit handler that was registered before the library was loaded.
#include <cstdlib>
#include <iostream>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using MakeRequest = void (*)(const char* server, const char* folder);

MakeRequest make_request = nullptr;
char** arguments = nullptr;

MakeRequest Load(const char* module) {
#ifdef _WIN32
  const HMODULE loaded = LoadLibraryA(module);
  return loaded == nullptr ? nullptr
                           : reinterpret_cast<MakeRequest>(
                                 reinterpret_cast<void*>(GetProcAddress(loaded, "MakeRequest")));
#else
  void* const loaded = dlopen(module, RTLD_NOW | RTLD_LOCAL);
  return loaded == nullptr ? nullptr : reinterpret_cast<MakeRequest>(dlsym(loaded, "MakeRequest"));
#endif
}

void RequestOnce() { make_request(arguments[1], arguments[2]); }

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4 || std::atexit(RequestOnce) != 0) return 2;
  arguments = argv;
  make_request = Load(argv[3]);
  if (make_request == nullptr) {
    std::cerr << "late_host: cannot load " << argv[3] << '\n';
    std::_Exit(2);
  }
  RequestOnce();
  return 0;
}
