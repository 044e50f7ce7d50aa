#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "processes/file_host.h"
#include "processes/large_package.h"
#include "processes/partner_host.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

constexpr int kRounds = 50;
constexpr std::size_t kPackageSize = 500000;

TEST(TwoHosts, ThatPrepareOnePackageAtOnceLeaveItWhole) {
  const TempFolder folder;
  const std::string package = LargePackage(kPackageSize);
  const PackageService service(kPackageSize);
  PartnerHost first(folder.text(), folder.Entry("id"), service.url());
  PartnerHost second(folder.text(), folder.Entry("id"), service.url());
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    // Every other time there is none to begin with.
    if (round % 2 == 0) std::filesystem::remove_all(folder.path() / "updates");
    first.Begin();
    second.Begin();
    EXPECT_TRUE(IsFallbackId(first.End()));
    EXPECT_TRUE(IsFallbackId(second.End()));
    ASSERT_TRUE(FileBytes(folder.path() / "updates" / "editor.pkg") == package);
  }
}

TEST(TwoHosts, ThatBothFindNoFallbackIdLeaveOneOfTheirs) {
  const TempFolder folder;
  const std::filesystem::path id_path = folder.path() / "id";
  PartnerHost first(folder.text(), folder.Entry("id"), "mock://package-ok");
  PartnerHost second(folder.text(), folder.Entry("id"), "mock://package-ok");
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    std::filesystem::remove(id_path);
    first.Begin();
    second.Begin();
    const std::string ids[] = {first.End(), second.End()};
    EXPECT_TRUE(IsFallbackId(ids[0])) << ids[0];
    EXPECT_TRUE(IsFallbackId(ids[1])) << ids[1];
    const std::string stored = FileBytes(id_path);
    ASSERT_TRUE(stored == ids[0] || stored == ids[1]) << stored;
    EXPECT_EQ(FileHost(folder.text(), folder.Entry("id")).GetDeviceId().value, stored);
  }
}

}  // namespace
}  // namespace korvixsdk::test
