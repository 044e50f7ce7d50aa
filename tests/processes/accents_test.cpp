#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "processes/expect_error.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace korvixsdk::test {
namespace {

constexpr char kFolderName[] =
    "Donn\xc3\xa9"
    "es de l'\xc3\xa9"
    "diteur";
constexpr char kFileName[] =
    "\xc3\xa9"
    "diteur \xc3\xa0 jour.pkg";

/// UTF-8 as narrow paths are written on this system; nothing where its code page lacks the letters.
std::optional<std::string> Narrow(const std::string& utf8) {
#ifdef _WIN32
  const std::wstring wide = std::filesystem::u8path(utf8).wstring();
  char narrow[256] = {};
  BOOL lossy = FALSE;
  if (WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.c_str(), -1, narrow, sizeof(narrow),
                          nullptr, &lossy) == 0 ||
      lossy) {
    return std::nullopt;
  }
  return narrow;
#else
  return utf8;
#endif
}

TEST(Accents, AndSpacesAreTakenInCacheFolderAndPackageName) {
  const std::optional<std::string> folder_name = Narrow(kFolderName);
  const std::optional<std::string> file_name = Narrow(kFileName);
  if (!folder_name || !file_name) GTEST_SKIP() << "the code page has no accents";
  const TempFolder folder;
  FileHost host(folder.Entry(*folder_name));
  ASSERT_TRUE(host.init().ok()) << host.init().message;
  ExpectPackage(host, "mock://host/" + *file_name,
                Join(Join(folder.Entry(*folder_name), "updates"), *file_name));
  const std::filesystem::path cache = folder.path() / std::filesystem::u8path(kFolderName);
  EXPECT_EQ(FileBytes(cache / "updates" / std::filesystem::u8path(kFileName)), kMockPackage);
}

TEST(Accents, AndSpacesAreTakenInFallbackIdFile) {
  const TempFolder folder;
  // UTF-8 on every system.
  const std::string path = Join(folder.Entry(kFolderName), kFileName);
  FileHost host(folder.Entry("cache"), path);
  const Result<std::string> id = host.GetDeviceId();
  EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
  EXPECT_EQ(FileBytes(folder.path() / std::filesystem::u8path(kFolderName) /
                      std::filesystem::u8path(kFileName)),
            id.value);
  EXPECT_EQ(FileHost(folder.Entry("cache"), path).GetDeviceId().value, id.value);
}

}  // namespace
}  // namespace korvixsdk::test
