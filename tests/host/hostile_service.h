#ifndef KORVIXSDK_TESTS_HOST_HOSTILE_SERVICE_H_
#define KORVIXSDK_TESTS_HOST_HOSTILE_SERVICE_H_

#include <curl/curl.h>
#include <korvixsdk/korvixsdk.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {

/// A body that both endpoints understand in full, and that serves as the package as well.
inline const std::string kSoundBody =
    R"({"server_time":1700000000,"msg":"welcome","code":400,"allowed":true,"version":"2.0.0"})";
ServerResult SoundInstall();
UpdateInfo SoundUpdate();

/// What a host hands to `PrepareUpdate`: a package on the service, with the sound body's digest.
UpdateInfo OfferAt(const std::string& address);

/// A 200 with these header lines, each with its line end, and the body; then the close.
Script Reply(const std::string& headers, const std::string& body = kSoundBody);

/// One chunk of a chunked body, with an extension behind its size.
std::string Chunk(const std::string& bytes, const std::string& extension = "");

std::string Repeated(std::string_view text, std::size_t times);

/// What one reply comes to: the same for both endpoints and for the download, but for the words.
class Outcome {
 public:
  /// libcurl ends the exchange with this code.
  static Outcome Fails(CURLcode code);
  static Outcome Status(long status);
  /// The body reaches the reader. Unless told otherwise, it is no install reply, and an update
  /// reply without an offer.
  static Outcome Body(std::string body);
  static Outcome Sound();
  Outcome ReadAs(const ServerResult& install) const;
  Outcome ReadAs(const UpdateInfo& update) const;

  Result<ServerResult> OfInstallReport() const;
  Result<UpdateInfo> OfUpdateCheck() const;
  /// Of a package whose announced digest is that of the sound body.
  Result<PreparedUpdate> OfDownload(const std::string& address, const std::string& path) const;

 private:
  Error EndpointError() const;
  Error TransferError(const char* transfer_text, const char* status_text) const;

  bool delivers_ = false;
  CURLcode code_ = CURLE_OK;
  long status_ = 0;
  std::string body_;
  Result<ServerResult> install_;
  UpdateInfo update_;
};

/// Several where versions of libcurl, or the moment at which it looks, decide.
using Outcomes = std::vector<Outcome>;
Outcomes FailsWithOneOf(const std::vector<CURLcode>& codes);
/// The first line is none of HTTP.
Outcomes NoHttp();
/// One line of the head is longer than libcurl takes.
Outcomes LineTooLong();
/// All lines of all heads together are.
Outcomes TooManyHeaders();

struct HostileReply {
  std::string what;
  /// One for each connection; the last one for all that follow.
  std::vector<Script> scripts;
  Outcomes outcomes;
};

/// A host with one facade, and the service that it talks to and downloads from.
class HostOfHostileService {
 public:
  HostOfHostileService();

  /// Each operation meets the reply and then a sound service, on the same facade.
  void Expect(const HostileReply& reply);
  void ExpectOfInstallReport(const HostileReply& reply);
  void ExpectOfUpdateCheck(const HostileReply& reply);
  void ExpectOfDownload(const HostileReply& reply);
  void ExpectSoundService();

  KorvixSDK& sdk() { return sdk_; }
  ScriptedServer& server() { return server_; }
  const TempFolder& folder() const { return folder_; }
  UpdateInfo Offer() const { return OfferAt(server_.address()); }

 private:
  void InstallReportMeets(const HostileReply& reply);
  void UpdateCheckMeets(const HostileReply& reply);
  void DownloadMeets(const HostileReply& reply);

  TempFolder folder_;
  ScriptedServer server_;
  KorvixSDK sdk_;
};

/// One facade for the whole table.
void ExpectAll(const std::vector<HostileReply>& replies);

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_HOST_HOSTILE_SERVICE_H_
