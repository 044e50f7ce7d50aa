#include "host/hostile_service.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <utility>

#include "support/host_config.h"
#include "support/record_equality.h"

namespace korvixsdk::test {
namespace {

constexpr char kSoundDigest[] = "c01cd0503c6d500ea73afe06bf5b93a79a1af4060e40a6cf90b46adbbb447f32";
/// Of a value in the text of a failure.
constexpr std::size_t kLongestText = 2000;

template <typename T>
std::string Text(const Result<T>& result) {
  std::string text = testing::PrintToString(result.error) + testing::PrintToString(result.value);
  if (text.size() > kLongestText) text.replace(kLongestText, std::string::npos, "...");
  return text;
}

template <typename T>
void ExpectOneOf(const std::vector<Result<T>>& documented, const Result<T>& actual) {
  std::string texts;
  for (const Result<T>& one : documented) {
    if (one.error == actual.error && one.value == actual.value) return;
    texts += "\n  " + Text(one);
  }
  ADD_FAILURE() << "came to\n  " << Text(actual) << "\nwhere documented are" << texts;
}

std::string Digest(const std::string& bytes) {
  static const std::shared_ptr<ICryptoProvider> crypto =
      SdkFactory::CreateDefaultServices()->crypto;
  return crypto->Sha256Hex(bytes).value;
}

HostileReply SoundReply() {
  return {"a sound reply", {Script::Response(200, kSoundBody)}, {Outcome::Sound()}};
}

/// Newer versions have a code of its own for what is too large.
std::vector<CURLcode> OrTooLarge(CURLcode code) {
#if LIBCURL_VERSION_NUM >= 0x080600
  return {code, CURLE_TOO_LARGE};
#else
  return {code};
#endif
}

}  // namespace

ServerResult SoundInstall() { return {true, 400, "welcome", true, 1700000000}; }

UpdateInfo SoundUpdate() {
  UpdateInfo info;
  info.has_update = true;
  info.latest_version = "2.0.0";
  return info;
}

UpdateInfo OfferAt(const std::string& address) {
  UpdateInfo offer = SoundUpdate();
  offer.download_url = address + "/editor.pkg";
  offer.sha256 = kSoundDigest;
  return offer;
}

Script Reply(const std::string& headers, const std::string& body) {
  return Script().Send("HTTP/1.1 200 OK\r\n" + headers + "\r\n" + body);
}

std::string Chunk(const std::string& bytes, const std::string& extension) {
  char size[17];
  std::snprintf(size, sizeof(size), "%zx", bytes.size());
  return size + extension + "\r\n" + bytes + "\r\n";
}

std::string Repeated(std::string_view text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t done = 0; done < times; ++done) all.append(text);
  return all;
}

Outcome Outcome::Fails(CURLcode code) {
  Outcome outcome;
  outcome.code_ = code;
  return outcome;
}

Outcome Outcome::Status(long status) {
  Outcome outcome;
  outcome.status_ = status;
  return outcome;
}

Outcome Outcome::Body(std::string body) {
  Outcome outcome;
  outcome.delivers_ = true;
  outcome.body_ = std::move(body);
  outcome.install_.error = {kInvalidResponse, "invalid JSON or install response schema"};
  return outcome;
}

Outcome Outcome::Sound() { return Body(kSoundBody).ReadAs(SoundInstall()).ReadAs(SoundUpdate()); }

Outcome Outcome::ReadAs(const ServerResult& install) const {
  Outcome outcome = *this;
  outcome.install_ = {install, Error{}};
  return outcome;
}

Outcome Outcome::ReadAs(const UpdateInfo& update) const {
  Outcome outcome = *this;
  outcome.update_ = update;
  return outcome;
}

Error Outcome::TransferError(const char* transfer_text, const char* status_text) const {
  if (code_ != CURLE_OK) {
    return Error{kNetworkError, std::string(transfer_text) + curl_easy_strerror(code_)};
  }
  if (!delivers_) return Error{kNetworkError, status_text + std::to_string(status_)};
  return Error{};
}

Error Outcome::EndpointError() const {
  Error error = TransferError("HTTP request failed: ", "HTTP status is not successful: ");
  if (error.ok() && body_.empty()) return {kInvalidResponse, "HTTP response body is empty"};
  return error;
}

Result<ServerResult> Outcome::OfInstallReport() const {
  Error error = EndpointError();
  if (!error.ok()) return {{}, std::move(error)};
  return install_;
}

Result<UpdateInfo> Outcome::OfUpdateCheck() const {
  Error error = EndpointError();
  if (!error.ok()) return {{}, std::move(error)};
  return {update_, Error{}};
}

Result<PreparedUpdate> Outcome::OfDownload(const std::string& address,
                                           const std::string& path) const {
  Error error = TransferError("Update download failed: ", "Update download returned HTTP status ");
  if (!error.ok()) return {{}, std::move(error)};
  PreparedUpdate prepared;
  prepared.download_url = address;
  prepared.expected_sha256 = kSoundDigest;
  prepared.actual_sha256 = Digest(body_);
  prepared.package_path = path;
  if (body_ == kSoundBody) {
    prepared.ready = true;
    prepared.sha256_verified = true;
  } else {
    prepared.message = "Downloaded update package sha256 mismatch";
    error = Error{kHashMismatch, prepared.message};
  }
  return {std::move(prepared), std::move(error)};
}

Outcomes FailsWithOneOf(const std::vector<CURLcode>& codes) {
  Outcomes outcomes;
  for (const CURLcode code : codes) outcomes.push_back(Outcome::Fails(code));
  return outcomes;
}

Outcomes NoHttp() { return FailsWithOneOf({CURLE_UNSUPPORTED_PROTOCOL, CURLE_WEIRD_SERVER_REPLY}); }

Outcomes LineTooLong() { return FailsWithOneOf(OrTooLarge(CURLE_OUT_OF_MEMORY)); }

Outcomes TooManyHeaders() { return FailsWithOneOf(OrTooLarge(CURLE_RECV_ERROR)); }

HostOfHostileService::HostOfHostileService() : server_(Script::Response(200, kSoundBody)) {
  EXPECT_TRUE(sdk_.Init(HostConfig(folder_, server_.address())).ok());
}

void HostOfHostileService::Expect(const HostileReply& reply) {
  ExpectOfInstallReport(reply);
  ExpectOfUpdateCheck(reply);
  ExpectOfDownload(reply);
}

void HostOfHostileService::ExpectOfInstallReport(const HostileReply& reply) {
  InstallReportMeets(reply);
  InstallReportMeets(SoundReply());
}

void HostOfHostileService::ExpectOfUpdateCheck(const HostileReply& reply) {
  UpdateCheckMeets(reply);
  UpdateCheckMeets(SoundReply());
}

void HostOfHostileService::ExpectOfDownload(const HostileReply& reply) {
  DownloadMeets(reply);
  DownloadMeets(SoundReply());
}

void HostOfHostileService::ExpectSoundService() {
  InstallReportMeets(SoundReply());
  UpdateCheckMeets(SoundReply());
  DownloadMeets(SoundReply());
}

void HostOfHostileService::InstallReportMeets(const HostileReply& reply) {
  SCOPED_TRACE("install report meets " + reply.what);
  server_.Play(reply.scripts);
  std::vector<Result<ServerResult>> documented;
  for (const Outcome& outcome : reply.outcomes) documented.push_back(outcome.OfInstallReport());
  ExpectOneOf(documented, sdk_.ReportInstall());
}

void HostOfHostileService::UpdateCheckMeets(const HostileReply& reply) {
  SCOPED_TRACE("update check meets " + reply.what);
  server_.Play(reply.scripts);
  std::vector<Result<UpdateInfo>> documented;
  for (const Outcome& outcome : reply.outcomes) documented.push_back(outcome.OfUpdateCheck());
  const Result<UpdateInfo> check = sdk_.CheckForUpdate();
  ExpectOneOf(documented, check);
  EXPECT_EQ(sdk_.GetLastError(), check.ok() ? check.value.message : check.error.message);
}

void HostOfHostileService::DownloadMeets(const HostileReply& reply) {
  SCOPED_TRACE("download meets " + reply.what);
  const UpdateInfo offer = Offer();
  const std::filesystem::path path = folder_.path() / "cache" / "updates" / "editor.pkg";
  std::filesystem::remove(path);
  server_.Play(reply.scripts);
  std::vector<Result<PreparedUpdate>> documented;
  for (const Outcome& outcome : reply.outcomes) {
    documented.push_back(outcome.OfDownload(offer.download_url, path.string()));
  }
  const Result<PreparedUpdate> prepared = sdk_.PrepareUpdate(offer);
  ExpectOneOf(documented, prepared);
  EXPECT_EQ(sdk_.GetLastError(), prepared.error.message);
  // A failed transfer leaves nothing on the disk; anything else leaves what the digest tells.
  const bool written = std::filesystem::exists(path);
  EXPECT_EQ(written, !prepared.value.package_path.empty());
  EXPECT_EQ(written ? Digest(FileBytes(path)) : "", prepared.value.actual_sha256);
}

void ExpectAll(const std::vector<HostileReply>& replies) {
  HostOfHostileService host;
  for (const HostileReply& reply : replies) host.Expect(reply);
}

}  // namespace korvixsdk::test
