#include "doctor/package_checks.h"

#include <chrono>
#include <string>

#include "doctor/address_checks.h"
#include "doctor/exchange.h"
#include "doctor/folder.h"
#include "doctor/verdicts.h"
#include "platform/mock_addresses.h"

namespace doctor {
namespace {

using korvixsdk::PreparedUpdate;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

constexpr long kLibcurlsOwnConnectLimit = 0;
constexpr long kSeconds = 30;
/// Beyond this announced length the library reserves nothing.
constexpr curl_off_t kLargestReservation = curl_off_t{1} << 30;

Check CheckDownload(const std::string& url, const Exchange& exchange) {
  Findings findings;
  if (exchange.failure.code == CURLE_OPERATION_TIMEDOUT) {
    findings.Fail(exchange.failure.text,
                  "The whole package must arrive within 30 seconds: serve it faster or make it "
                  "smaller");
  } else if (exchange.failure.code != CURLE_OK) {
    findings.Fail(exchange.failure.text, "Check the package's server and its certificate");
  } else if (exchange.status < 200 || exchange.status > 299) {
    findings.Fail("HTTP status " + std::to_string(exchange.status),
                  "Put the package at \"download_url\", readable without signing in");
  } else if (exchange.body.empty()) {
    findings.Fail("the package is empty", "Put the whole package at \"download_url\"");
  }
  if (!exchange.content_encoding.empty()) {
    findings.Warn("Content-Encoding is " + exchange.content_encoding + ", which hosts do not undo",
                  "Send the package's bytes as they are");
  }
  if (SchemeOf(url) == "https" && SchemeOf(exchange.final_url) == "http") {
    findings.Warn("redirected from HTTPS to plain HTTP", "Redirect to https: addresses only");
  }
  Check check = findings.As("package.request", std::to_string(exchange.body.size()) + " bytes");
  check.milliseconds = exchange.milliseconds;
  return check;
}

Check CheckLength(const Exchange& exchange) {
  const char* const id = "package.length";
  if (exchange.announced_length < 0) {
    return Warn(id, "the length is not announced",
                "Send Content-Length: memory is reserved at once, and a cut transfer is noticed");
  }
  const std::string text = std::to_string(exchange.announced_length) + " bytes are announced";
  if (exchange.announced_length > kLargestReservation) {
    return Warn(id, text + ", and hosts hold a package in memory", "Make the package smaller");
  }
  return Pass(id, text);
}

Check CheckDigest(Subject& subject, const std::string& body, const std::string& announced) {
  const char* const id = "package.digest";
  const Result<std::string> digest = subject.services->crypto->Sha256Hex(body);
  if (!digest.ok()) return Fail(id, Describe(digest.error), "Look at the system's cryptography");
  if (announced.empty()) {
    return Warn(id, digest.value + ", and none is announced to compare it with",
                "Announce this digest as \"sha256\", if the package is the right one");
  }
  if (digest.value == announced) return Pass(id, "as announced");
  return Fail(id, "the package has " + digest.value + ", announced is " + announced,
              "Publish the digest of the very bytes that are served, in lowercase; look for caches "
              "with an older package");
}

void CheckByDoctor(Subject& subject, const UpdateInfo& offer, Checklist& checklist) {
  const Exchange exchange = Get(offer.download_url, kLibcurlsOwnConnectLimit, kSeconds);
  checklist.Add(CheckDownload(offer.download_url, exchange));
  if (checklist.Failed({"package.request"})) {
    checklist.AddNotTried({"package.length", "package.digest"}, "there is no package");
    return;
  }
  checklist.Add(CheckLength(exchange));
  checklist.Add(CheckDigest(subject, exchange.body, offer.sha256));
}

Check CheckByLibrary(Subject& subject, const UpdateInfo& offer) {
  const char* const id = "package.library";
  // The facade would store it where the host's own packages are.
  const std::string folder = Entry(subject.options.config.cache_dir, "doctor");
  const auto start = std::chrono::steady_clock::now();
  const Result<PreparedUpdate> prepared =
      subject.services->update_package_service->Prepare(offer, folder);
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  Remove(folder);
  Check check = Pass(id, offer.sha256.empty() ? "downloaded, and nothing to compare it with"
                                              : "downloaded and verified");
  if (!prepared.ok()) {
    check =
        Fail(id, Describe(prepared.error), "See the failures above; docs/errors.md tells the rest");
  }
  check.milliseconds = time.count();
  return check;
}

/// Why there is nothing to look at; empty when there is.
std::string WhyNot(const Subject& subject, const UpdateInfo& offer) {
  if (offer.download_url.empty()) return "no package is offered";
  if (korvixsdk::IsMockUrl(subject.options.config.server_base_url) &&
      !subject.options.package_url) {
    return "the mock server's package address is an example; --package-url names another";
  }
  return {};
}

}  // namespace

void CheckPackage(Subject& subject, UpdateInfo offer, Checklist& checklist) {
  if (subject.options.package_url && !offer.latest_version.empty()) {
    offer.download_url = *subject.options.package_url;
  }
  const std::string& address = offer.download_url;
  if (const std::string why_not = WhyNot(subject, offer); !why_not.empty()) {
    checklist.AddNotTried({"package.address", "package.name", "package.request", "package.length",
                           "package.digest", "package.library"},
                          why_not);
    return;
  }
  checklist.Add(CheckPackageAddress(address, subject.options.config.server_base_url));
  checklist.Add(CheckPackageName(address));
  const bool bad_address = checklist.Failed({"package.address"});
  if (bad_address || korvixsdk::IsMockUrl(address)) {
    checklist.AddNotTried({"package.request", "package.length", "package.digest"},
                          bad_address ? "the address is no package's" : kMockReason);
  } else {
    CheckByDoctor(subject, offer, checklist);
  }
  if (!subject.initialised) {
    checklist.AddNotTried({"package.library"}, kNoFacade);
  } else if (bad_address || checklist.Failed({"package.name"})) {
    checklist.AddNotTried({"package.library"}, "address or name of the package may do harm");
  } else {
    checklist.Add(CheckByLibrary(subject, offer));
  }
}

}  // namespace doctor
