#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "host/hostile_service.h"
#include "support/record_equality.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

class OfferedAddress : public testing::Test {
 protected:
  /// The service offers a package at `address`, and the host takes up the offer.
  Result<PreparedUpdate> Prepare(const std::string& address) {
    host_.server().Play(
        Script::Response(200, R"({"version":"2.0.0","download_url":")" + address + R"("})"));
    const Result<UpdateInfo> check = host_.sdk().CheckForUpdate();
    EXPECT_TRUE(check.value.has_update);
    EXPECT_EQ(check.value.download_url, address);
    return host_.sdk().PrepareUpdate(check.value);
  }

  /// No package, no trace, and the same facade goes on.
  void ExpectFailure(const std::string& address, const std::vector<Error>& documented) {
    SCOPED_TRACE(address.substr(0, 60));
    const Result<PreparedUpdate> prepared = Prepare(address);
    EXPECT_EQ(std::count(documented.begin(), documented.end(), prepared.error), 1)
        << prepared.error;
    EXPECT_EQ(prepared.value, PreparedUpdate());
    EXPECT_TRUE(std::filesystem::is_empty(updates_));
    host_.ExpectSoundService();
    std::filesystem::remove(updates_ / "editor.pkg");
  }

  Error DownloadError(CURLcode code) const {
    return {kNetworkError, std::string("Update download failed: ") + curl_easy_strerror(code)};
  }

  HostOfHostileService host_;
  const std::filesystem::path updates_ = host_.folder().path() / "cache" / "updates";
};

TEST_F(OfferedAddress, OfAFileIsNoPackage) {
  const std::filesystem::path file = host_.folder().path() / "secret";
  WriteBytes(file, "secret");
  const std::string path = file.generic_string();
  ExpectFailure((path.front() == '/' ? "file://" : "file:///") + path,
                {{kNetworkError, "Update download returned HTTP status 0"},
                 DownloadError(CURLE_UNSUPPORTED_PROTOCOL),
                 DownloadError(CURLE_URL_MALFORMAT)});
}

TEST_F(OfferedAddress, OfAnotherSchemeIsNoPackage) {
  const std::string closed = "://127.0.0.1:" + std::to_string(UnusedPort()) + "/package";
  for (const std::string scheme : {"ftp", "gopher", "dict", "telnet", "unheard-of"}) {
    ExpectFailure(scheme + closed, {DownloadError(CURLE_COULDNT_CONNECT),
                                    DownloadError(CURLE_UNSUPPORTED_PROTOCOL)});
  }
}

TEST_F(OfferedAddress, OfAMockPackageIsAnsweredByTheLibraryItself) {
  const Result<PreparedUpdate> prepared = Prepare("mock://evil.example/editor.pkg");
  EXPECT_TRUE(prepared.ok()) << prepared.error;
  EXPECT_TRUE(prepared.value.ready);
  EXPECT_EQ(FileBytes(updates_ / "editor.pkg"), "mock update package payload");
}

TEST_F(OfferedAddress, WithAZeroByteIsMalformed) {
  ExpectFailure(host_.server().address() + "/editor\0.pkg"s, {DownloadError(CURLE_URL_MALFORMAT)});
  ExpectFailure("\0"s, {DownloadError(CURLE_URL_MALFORMAT)});
}

TEST_F(OfferedAddress, ThatIsNoneIsMalformed) {
  for (const std::string& address :
       {" "s, "http://"s, "http://["s, "http://127.0.0.1:65536/x"s, "http://a b/x"s, "\xff\xfe"s}) {
    ExpectFailure(address,
                  {DownloadError(CURLE_URL_MALFORMAT), DownloadError(CURLE_COULDNT_RESOLVE_HOST)});
  }
}

TEST_F(OfferedAddress, BeyondEightMegabytesFails) {
  ExpectFailure(host_.server().address() + "/" + std::string(9000000, 'x'),
                {DownloadError(CURLE_BAD_FUNCTION_ARGUMENT)});
}

#ifdef _WIN32
TEST_F(OfferedAddress, WithABackslashOrADriveLeadsOutOfTheFolderOnWindows) {
  const std::filesystem::path elsewhere = host_.folder().path() / "elsewhere.pkg";
  for (const std::string& name : {"..\\..\\elsewhere.pkg"s, elsewhere.string()}) {
    UpdateInfo offer = host_.Offer();
    offer.download_url = host_.server().address() + "/" + name;
    const Result<PreparedUpdate> prepared = host_.sdk().PrepareUpdate(offer);
    EXPECT_TRUE(prepared.ok()) << name << ": " << prepared.error;
    EXPECT_EQ(FileBytes(elsewhere), kSoundBody) << name;
    EXPECT_TRUE(std::filesystem::is_empty(updates_));
    std::filesystem::remove(elsewhere);
  }
}

TEST_F(OfferedAddress, OfADeviceLeavesNoFileOnWindows) {
  for (const std::string& name : {"nul"s, "nul.pkg"s, "aux"s}) {
    UpdateInfo offer = host_.Offer();
    offer.download_url = host_.server().address() + "/" + name;
    const Result<PreparedUpdate> prepared = host_.sdk().PrepareUpdate(offer);
    const Error no_file{kFileSystemError,
                        "Failed to open file for write: " + (updates_ / name).string()};
    EXPECT_TRUE(prepared.ok() || prepared.error == no_file) << prepared.error;
    EXPECT_EQ(prepared.value.ready, prepared.ok());
    EXPECT_TRUE(std::filesystem::is_empty(updates_)) << name;
  }
}
#endif

TEST_F(OfferedAddress, WithANameThatIsNoFileFailsToWrite) {
  for (const std::string& name : {"."s, ".."s, std::string(5000, 'x')}) {
    const std::string path = (updates_ / name).string();
    ExpectFailure(host_.server().address() + "/" + name,
                  {{kFileSystemError, "Failed to open file for write: " + path}});
  }
}

}  // namespace
}  // namespace korvixsdk::test
