#include "update/package_path.h"

#include <gtest/gtest.h>

#include <string>

namespace korvixsdk {
namespace {

#ifdef _WIN32
const std::string kSeparator = "\\";
#else
const std::string kSeparator = "/";
#endif

TEST(PackageFileName, IsWhatFollowsTheLastSlash) {
  EXPECT_EQ(PackageFileName("https://host/a/pkg.bin"), "pkg.bin");
  EXPECT_EQ(PackageFileName("mock://package-ok"), "package-ok");
}

TEST(PackageFileName, IsDefaultWhereNothingFollows) {
  EXPECT_EQ(PackageFileName("https://host/folder/"), "update_package.bin");
  EXPECT_EQ(PackageFileName("no slash at all"), "update_package.bin");
  EXPECT_EQ(PackageFileName("https://host/?file=1"), "update_package.bin");
  EXPECT_EQ(PackageFileName(""), "update_package.bin");
}

TEST(PackageFileName, IsCutAtFirstQuestionMark) {
  EXPECT_EQ(PackageFileName("https://host/pkg.bin?a=1?b=2"), "pkg.bin");
}

TEST(PackageFileName, FollowsLastSlashEvenInsideQuery) {
  EXPECT_EQ(PackageFileName("https://host/dl?f=a/b.bin"), "b.bin");
}

TEST(PackageFileName, IsNotCleanedOtherwise) {
  EXPECT_EQ(PackageFileName("https://host/a%20b#part"), "a%20b#part");
  EXPECT_EQ(PackageFileName("https://host/.."), "..");
}

TEST(PackagePath, IsBelowUpdatesFolder) {
  EXPECT_EQ(PackageDirectory("cache"), "cache" + kSeparator + "updates");
  EXPECT_EQ(PackagePath("cache", "mock://package-ok"),
            "cache" + kSeparator + "updates" + kSeparator + "package-ok");
}

TEST(PackagePath, KeepsSeparatorThatTheFolderEndsIn) {
  EXPECT_EQ(PackageDirectory("cache/"), "cache/updates");
}

TEST(PackagePath, JoinsTextWithZeroByteAsText) {
  const std::string folder("a\0b", 3);
  EXPECT_EQ(PackageDirectory(folder), folder + kSeparator + "updates");
}

}  // namespace
}  // namespace korvixsdk
