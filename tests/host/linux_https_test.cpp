#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "host/hostile_service.h"
#include "host/linux_https_server.h"
#include "support/child_process.h"
#include "support/host_config.h"
#include "support/record_equality.h"

// Run by the script https-certificates, which makes the certificates; the suite TrustedHttps where
// their authority is trusted.
namespace korvixsdk::test {
namespace {

std::string Certificate(const std::string& name) {
  const char* const folder = std::getenv("KORVIXSDK_TEST_CERTIFICATES");
  if (folder == nullptr) throw std::runtime_error("run by tests/host/https-certificates");
  return std::string(folder) + "/" + name + ".pem";
}

std::string SoundReplyText() {
  return "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
         std::to_string(kSoundBody.size()) + "\r\n\r\n" + kSoundBody;
}

/// All that a host asks of the service at `address`.
void ExpectAt(KorvixSDK& sdk, const TempFolder& folder, const std::string& address,
              const Outcome& outcome) {
  ASSERT_TRUE(sdk.Init(HostConfig(folder, address)).ok());

  const Result<ServerResult> install = sdk.ReportInstall();
  EXPECT_EQ(install.error, outcome.OfInstallReport().error);
  EXPECT_EQ(install.value, outcome.OfInstallReport().value);
  const Result<UpdateInfo> check = sdk.CheckForUpdate();
  EXPECT_EQ(check.error, outcome.OfUpdateCheck().error);
  EXPECT_EQ(check.value, outcome.OfUpdateCheck().value);

  const UpdateInfo offer = OfferAt(address);
  const std::string path = (folder.path() / "cache" / "updates" / "editor.pkg").string();
  const Result<PreparedUpdate> expected = outcome.OfDownload(offer.download_url, path);
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(offer);
  EXPECT_EQ(prepared.error, expected.error);
  EXPECT_EQ(prepared.value, expected.value);
}

void ExpectRefusedAt(const std::string& address) {
  const TempFolder folder;
  KorvixSDK sdk;
  ExpectAt(sdk, folder, address, Outcome::Fails(CURLE_PEER_FAILED_VERIFICATION));
  // The same facade goes on with a service that is sound.
  const ScriptedServer sound(Script::Response(200, kSoundBody));
  ExpectAt(sdk, folder, sound.address(), Outcome::Sound());
}

void ExpectRefused(const std::string& certificate) {
  const HttpsServer server(Certificate(certificate), SoundReplyText());
  ExpectRefusedAt(server.address());
  EXPECT_EQ(server.requests(), 0);
}

/// A handshake needs the TLS library up to its end, wherever the host's own is.
TEST(HttpsCertificate, HostsEndInOrderWhileSixWorkersShakeHands) {
  constexpr int kRounds = 100 / KORVIXSDK_ENDINGS_PART;
  constexpr int kLongestMicroseconds = 40000;
  const TempFolder folder;
  const HttpsServer server(Certificate("self-signed"), SoundReplyText());
  for (int round = 0; round < kRounds; ++round) {
    const std::string time = std::to_string(kLongestMicroseconds * round / kRounds);
    ChildProcess host({KORVIXSDK_ENDING_HOST, "loop", server.address(), folder.text(), time});
    EXPECT_EQ(host.Wait(), 0u) << "after " << time << " microseconds";
  }
}

TEST(HttpsCertificate, IsRefusedWhenSelfSigned) { ExpectRefused("self-signed"); }

TEST(HttpsCertificate, IsRefusedWhenExpired) { ExpectRefused("expired"); }

TEST(HttpsCertificate, IsRefusedWhenNotYetValid) { ExpectRefused("not-yet-valid"); }

TEST(HttpsCertificate, IsRefusedForAnotherHost) { ExpectRefused("other-host"); }

TEST(HttpsCertificate, IsRefusedFromAnotherAuthority) { ExpectRefused("other-authority"); }

TEST(HttpsCertificate, IsRefusedBehindARedirect) {
  const HttpsServer server(Certificate("self-signed"), SoundReplyText());
  const ScriptedServer redirecting(Script::Redirect(server.address() + "/"));
  ExpectRefusedAt(redirecting.address());
  EXPECT_EQ(server.requests(), 0);
}

TEST(TrustedHttps, IsTaken) {
  const HttpsServer server(Certificate("good"), SoundReplyText());
  const TempFolder folder;
  KorvixSDK sdk;
  ExpectAt(sdk, folder, server.address(), Outcome::Sound());
  EXPECT_EQ(server.requests(), 3);
}

// libcurl follows from HTTPS to HTTP: it is the service's own word.
TEST(TrustedHttps, MayRedirectToPlainHttp) {
  const ScriptedServer plain(Script::Response(200, kSoundBody));
  const HttpsServer server(
      Certificate("good"),
      "HTTP/1.1 302 Found\r\nLocation: " + plain.address() + "/\r\nContent-Length: 0\r\n\r\n");
  const TempFolder folder;
  KorvixSDK sdk;
  ExpectAt(sdk, folder, server.address(), Outcome::Sound());
}

TEST(TrustedHttps, MayNotRedirectToARefusedCertificate) {
  const HttpsServer refused(Certificate("self-signed"), SoundReplyText());
  const HttpsServer server(
      Certificate("good"),
      "HTTP/1.1 302 Found\r\nLocation: " + refused.address() + "/\r\nContent-Length: 0\r\n\r\n");
  ExpectRefusedAt(server.address());
  EXPECT_EQ(refused.requests(), 0);
}

}  // namespace
}  // namespace korvixsdk::test
