#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

/// Linked against nothing of the library, which is loaded while the program runs.
#ifdef _WIN32
void* Load() { return LoadLibraryA(KORVIXSDK_LIBRARY); }
bool Unload(void* library) { return FreeLibrary(static_cast<HMODULE>(library)) != 0; }
void* Find(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
#else
void* Load() { return dlopen(KORVIXSDK_LIBRARY, RTLD_NOW | RTLD_LOCAL); }
bool Unload(void* library) { return dlclose(library) == 0; }
void* Find(void* library, const char* name) { return dlsym(library, name); }
#endif

TEST(Library, LoadsAndUnloadsAgainAndAgain) {
  for (int i = 0; i < 5; ++i) {
    void* const library = Load();
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(Unload(library));
  }
}

TEST(Library, ExportsTheFrontsAndNotTheServices) {
  void* const library = Load();
  ASSERT_NE(library, nullptr);
  EXPECT_NE(Find(library, "_ZN9korvixsdk9KorvixSDKC1Ev"), nullptr);
  EXPECT_NE(Find(library, "_ZN9korvixsdk10SdkFactory21CreateDefaultServicesEv"), nullptr);
  EXPECT_EQ(Find(library, "_ZN9korvixsdk20DefaultClientServiceD1Ev"), nullptr);
  Unload(library);
}

}  // namespace
