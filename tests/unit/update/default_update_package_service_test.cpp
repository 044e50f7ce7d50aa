#include "update/default_update_package_service.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/default_crypto_provider.h"
#include "platform/default_file_system_provider.h"
#include "support/fakes.h"
#include "support/mock_package.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FakeCrypto;
using test::FakeFileSystem;
using test::FileBytes;
using test::kMockPackage;
using test::kMockPackageDigest;
using test::TempFolder;

constexpr char kMismatch[] = "Downloaded update package sha256 mismatch";

UpdateInfo Offer(const std::string& url, const std::string& sha256 = "") {
  UpdateInfo info;
  info.download_url = url;
  info.sha256 = sha256;
  return info;
}

void ExpectEmpty(const PreparedUpdate& prepared) {
  EXPECT_FALSE(prepared.ready);
  EXPECT_FALSE(prepared.sha256_verified);
  for (const std::string& text :
       {prepared.download_url, prepared.expected_sha256, prepared.actual_sha256,
        prepared.package_path, prepared.reserved, prepared.message}) {
    EXPECT_EQ(text, "");
  }
}

/// A service over real files and real hashing.
class PackageService : public testing::Test {
 protected:
  PackageService() {
    services_->file_system = std::make_shared<DefaultFileSystemProvider>();
    services_->crypto = std::make_shared<DefaultCryptoProvider>();
  }
  Result<PreparedUpdate> Prepare(const UpdateInfo& info) { return service_.Prepare(info, Cache()); }
  std::string Cache() const { return folder_.Entry("cache"); }
  std::filesystem::path Package(const std::string& name) const {
    return folder_.path() / "cache" / "updates" / name;
  }

  TempFolder folder_;
  std::shared_ptr<ServiceRegistry> services_ = std::make_shared<ServiceRegistry>();
  DefaultUpdatePackageService service_{services_};
};

/// The same over fakes, which record their calls.
class PackageServiceSteps : public testing::Test {
 protected:
  PackageServiceSteps() {
    services_->file_system = files_;
    services_->crypto = crypto_;
  }

  std::shared_ptr<FakeFileSystem> files_ = std::make_shared<FakeFileSystem>();
  std::shared_ptr<FakeCrypto> crypto_ = std::make_shared<FakeCrypto>();
  std::shared_ptr<ServiceRegistry> services_ = std::make_shared<ServiceRegistry>();
  DefaultUpdatePackageService service_{services_};
};

TEST_F(PackageService, PreparesPackageWithMatchingDigest) {
  const auto prepared = Prepare(Offer("mock://package-ok", kMockPackageDigest));
  EXPECT_TRUE(prepared.ok());
  EXPECT_TRUE(prepared.value.ready);
  EXPECT_TRUE(prepared.value.sha256_verified);
  EXPECT_EQ(prepared.value.download_url, "mock://package-ok");
  EXPECT_EQ(prepared.value.expected_sha256, kMockPackageDigest);
  EXPECT_EQ(prepared.value.actual_sha256, kMockPackageDigest);
  EXPECT_EQ(prepared.value.reserved, "");
  EXPECT_EQ(prepared.value.message, "");
  EXPECT_EQ(FileBytes(Package("package-ok")), kMockPackage);
}

TEST_F(PackageService, PathLeadsToThePackageFile) {
  const auto prepared = Prepare(Offer("mock://package-ok"));
  EXPECT_TRUE(std::filesystem::equivalent(prepared.value.package_path, Package("package-ok")));
}

TEST_F(PackageService, MismatchReturnsFilledValueAndLeavesFile) {
  const auto prepared = Prepare(Offer("mock://package-alt", kMockPackageDigest));
  EXPECT_EQ(prepared.error.code, kHashMismatch);
  EXPECT_EQ(prepared.error.message, kMismatch);
  EXPECT_FALSE(prepared.value.ready);
  EXPECT_FALSE(prepared.value.sha256_verified);
  EXPECT_EQ(prepared.value.download_url, "mock://package-alt");
  EXPECT_EQ(prepared.value.expected_sha256, kMockPackageDigest);
  EXPECT_EQ(prepared.value.actual_sha256.size(), 64u);
  EXPECT_NE(prepared.value.actual_sha256, kMockPackageDigest);
  EXPECT_EQ(prepared.value.message, kMismatch);
  EXPECT_TRUE(std::filesystem::equivalent(prepared.value.package_path, Package("package-alt")));
  EXPECT_EQ(FileBytes(Package("package-alt")), "alternate mock update payload");
}

TEST_F(PackageService, UppercaseDigestNeverMatches) {
  std::string upper = kMockPackageDigest;
  for (char& c : upper) c = static_cast<char>(std::toupper(c));
  EXPECT_EQ(Prepare(Offer("mock://package-ok", upper)).error.code, kHashMismatch);
}

TEST_F(PackageService, DigestWithWhiteSpaceNeverMatches) {
  EXPECT_EQ(Prepare(Offer("mock://package-ok", std::string(kMockPackageDigest) + " ")).error.code,
            kHashMismatch);
}

TEST_F(PackageService, EmptyDigestSkipsComparison) {
  const auto prepared = Prepare(Offer("mock://package-alt"));
  EXPECT_TRUE(prepared.ok());
  EXPECT_TRUE(prepared.value.ready);
  EXPECT_TRUE(prepared.value.sha256_verified);
  EXPECT_EQ(prepared.value.actual_sha256.size(), 64u);
}

TEST_F(PackageService, OtherMockAddressesDifferInFileNameOnly) {
  EXPECT_TRUE(Prepare(Offer("mock://any/thing.bin", kMockPackageDigest)).ok());
  EXPECT_EQ(FileBytes(Package("thing.bin")), kMockPackage);
}

TEST_F(PackageService, QueryIsNoPartOfTheFileName) {
  EXPECT_TRUE(Prepare(Offer("mock://host/pkg.bin?token=1")).ok());
  EXPECT_TRUE(Prepare(Offer("mock://host/dl?f=a/b.bin")).ok());
  EXPECT_EQ(FileBytes(Package("pkg.bin")), kMockPackage);
  EXPECT_EQ(FileBytes(Package("b.bin")), kMockPackage);
}

TEST_F(PackageService, ReplacesEarlierPackage) {
  std::filesystem::create_directories(Package("package-ok").parent_path());
  test::WriteBytes(Package("package-ok"), std::string(1000, 'o'));
  EXPECT_TRUE(Prepare(Offer("mock://package-ok", kMockPackageDigest)).ok());
  EXPECT_EQ(FileBytes(Package("package-ok")), kMockPackage);
}

TEST_F(PackageService, ReportsPackageFileThatCannotBeOpened) {
  std::filesystem::create_directories(Package("package-ok"));
  const auto prepared = Prepare(Offer("mock://package-ok", kMockPackageDigest));
  EXPECT_EQ(prepared.error.code, kFileSystemError);
  EXPECT_EQ(prepared.error.message.rfind("Failed to open file for write: ", 0), 0u);
  ExpectEmpty(prepared.value);
}

TEST_F(PackageService, ReportsCacheFolderWithZeroByte) {
  const std::string cache("a\0b", 3);
  const auto prepared = service_.Prepare(Offer("mock://package-ok"), cache);
  EXPECT_EQ(prepared.error.code, kFileSystemError);
  EXPECT_EQ(prepared.error.message.rfind("Failed to create directories: " + cache, 0), 0u);
  ExpectEmpty(prepared.value);
}

#ifndef _WIN32
TEST_F(PackageService, ReportsFullDisk) {
  std::filesystem::create_directories(Package("package-ok").parent_path());
  std::filesystem::create_symlink("/dev/full", Package("package-ok"));
  const auto prepared = Prepare(Offer("mock://package-ok", kMockPackageDigest));
  EXPECT_EQ(prepared.error.code, kFileSystemError);
  EXPECT_EQ(prepared.error.message, "Failed to write file: " + Package("package-ok").string());
  ExpectEmpty(prepared.value);
}
#endif

TEST_F(PackageServiceSteps, EmptyAddressComesFirst) {
  services_->file_system = nullptr;
  const auto prepared = service_.Prepare(Offer(""), "cache");
  EXPECT_EQ(prepared.error.code, kInvalidArgument);
  EXPECT_EQ(prepared.error.message, "UpdateInfo.download_url must not be empty");
  ExpectEmpty(prepared.value);
}

TEST_F(PackageServiceSteps, NeedsRegistryFileSystemAndCrypto) {
  DefaultUpdatePackageService no_registry(nullptr);
  const auto first = no_registry.Prepare(Offer("mock://package-ok"), "cache");
  services_->file_system = nullptr;
  const auto second = service_.Prepare(Offer("mock://package-ok"), "cache");
  services_->file_system = files_;
  services_->crypto = nullptr;
  const auto third = service_.Prepare(Offer("mock://package-ok"), "cache");
  for (const auto& prepared : {first, second, third}) {
    EXPECT_EQ(prepared.error.code, kInvalidState);
    EXPECT_EQ(prepared.error.message, "Update package service dependencies are not configured");
    ExpectEmpty(prepared.value);
  }
  EXPECT_TRUE(files_->calls.empty());
}

TEST_F(PackageServiceSteps, CreatesFolderThenWritesThenHashesTheBytesInMemory) {
  crypto_->answer = {"abc", {}};
  const auto prepared = service_.Prepare(Offer("mock://package-ok"), "cache");
  const std::string folder = (std::filesystem::path("cache") / "updates").string();
  const std::string file = (std::filesystem::path("cache") / "updates" / "package-ok").string();
  EXPECT_EQ(files_->calls,
            (std::vector<std::string>{"CreateDirectories " + folder, "WriteFile " + file}));
  EXPECT_EQ(files_->written, kMockPackage);
  EXPECT_EQ(crypto_->hashed, (std::vector<std::string>{kMockPackage}));
  EXPECT_EQ(prepared.value.actual_sha256, "abc");
  EXPECT_EQ(prepared.value.package_path, file);
}

TEST_F(PackageServiceSteps, FolderFailureComesBeforeDownload) {
  files_->create_answer = Error{77, "no folder"};
  const auto prepared = service_.Prepare(Offer("mock://offline"), "cache");
  EXPECT_EQ(prepared.error.code, 77);
  EXPECT_EQ(prepared.error.message, "no folder");
  ExpectEmpty(prepared.value);
}

TEST_F(PackageServiceSteps, DownloadFailureWritesNothing) {
  const auto prepared = service_.Prepare(Offer("mock://offline"), "cache");
  EXPECT_EQ(prepared.error.code, kNetworkError);
  EXPECT_EQ(prepared.error.message, "Mock update download is offline");
  ExpectEmpty(prepared.value);
  EXPECT_EQ(files_->calls.size(), 1u);
}

TEST_F(PackageServiceSteps, WriteFailureIsReturnedUnchanged) {
  files_->write_answer = Error{78, "no space"};
  const auto prepared = service_.Prepare(Offer("mock://package-ok"), "cache");
  EXPECT_EQ(prepared.error.code, 78);
  EXPECT_EQ(prepared.error.message, "no space");
  ExpectEmpty(prepared.value);
  EXPECT_TRUE(crypto_->hashed.empty());
}

TEST_F(PackageServiceSteps, HashFailureIsReturnedUnchanged) {
  crypto_->answer = {"", Error{kPlatformError, "BCryptHashData failed"}};
  const auto prepared = service_.Prepare(Offer("mock://package-ok"), "cache");
  EXPECT_EQ(prepared.error.code, kPlatformError);
  EXPECT_EQ(prepared.error.message, "BCryptHashData failed");
  ExpectEmpty(prepared.value);
}

}  // namespace
}  // namespace korvixsdk
