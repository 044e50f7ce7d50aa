#include "explanations.h"

#include "offer_check.h"

namespace desktop_host {
namespace {

using korvixsdk::Error;

std::string NetworkSentence(Step step) {
  const std::string advice = " Check your internet connection and try again later.";
  if (step == Step::kPrepare) return "The update could not be downloaded." + advice;
  return "The update service could not be reached." + advice;
}

std::string StateSentence(Step step, const std::string& product_name) {
  switch (step) {
    case Step::kStart:
      return "The folder for updates could not be made. Check that you may write to it.";
    case Step::kLaunch:
      return "The update could not be started. Security software may have stopped it.";
    case Step::kIdentify:
    case Step::kCheck:
    case Step::kPrepare:
      break;
  }
  return product_name + " is not set up for updates. Please install it again.";
}

std::string Sentence(Step step, const Error& error, const std::string& product_name) {
  switch (error.code) {
    case korvixsdk::kNetworkError:
      return NetworkSentence(step);
    case korvixsdk::kInvalidResponse:
      return "The update service gave an answer that makes no sense. Try again later.";
    case offer_check::kOfferRefused:
      return "The update service offers a download that " + product_name +
             " does not trust, so nothing was downloaded. Try again later.";
    case korvixsdk::kHashMismatch:
      return "The download is damaged or was tampered with, so it was not installed. "
             "Try again later.";
    case korvixsdk::kNotFound:
      return "The program that installs updates is missing. Please install " + product_name +
             " again.";
    case korvixsdk::kFileSystemError:
      return "The update could not be saved. Check that there is room on the disk.";
    case korvixsdk::kPlatformError:
      if (step == Step::kIdentify) {
        return "This computer could not be identified. Updates work all the same.";
      }
      return "This computer's system refused a step of the update. Restart it and try again.";
    case korvixsdk::kInvalidState:
      // No folder, no package or no process, depending on what was tried.
      return StateSentence(step, product_name);
    case korvixsdk::kInvalidArgument:
      // An offer without an address of its package is the service's slip, all others are ours.
      if (step == Step::kPrepare) return "The update cannot be downloaded yet. Try again later.";
      break;
    default:
      break;
  }
  return product_name + " is not set up for updates. Please install it again.";
}

/// Whether `version` is older than the oldest that is supported. The library's comparison needs no
/// facade and does not block, so this is for any thread.
bool IsUnsupported(const std::string& version, const std::string& oldest) {
  const auto services = korvixsdk::SdkFactory::CreateDefaultServices();
  const bool unsupported = services->update_policy->IsNewerVersion(version, oldest);
  // They and the registry would keep each other alive.
  services->client_service.reset();
  services->update_package_service.reset();
  return unsupported;
}

}  // namespace

Explanation Explain(Step step, const Error& error, const std::string& product_name) {
  return {Sentence(step, error, product_name),
          "Code " + std::to_string(error.code) + "\n" + error.message};
}

Explanation ExplainRejection(const std::string& message) {
  return {"The update service turned the request down. Try again later.",
          "The service's message:\n" + message};
}

Explanation ExplainMismatch(const korvixsdk::Result<korvixsdk::PreparedUpdate>& prepared,
                            const std::string& product_name) {
  Explanation explanation = Explain(Step::kPrepare, prepared.error, product_name);
  explanation.details += "\nAnnounced:\n" + prepared.value.expected_sha256 + "\nDownloaded:\n" +
                         prepared.value.actual_sha256;
  return explanation;
}

std::string WhyMandatory(const korvixsdk::UpdateInfo& offer, const std::string& product_name,
                         const std::string& version) {
  const std::string reason =
      IsUnsupported(version, offer.min_supported_version)
          ? "versions before " + offer.min_supported_version + " are no longer supported."
          : "its publisher wants version " + version + " replaced.";
  return "This update is required: " + reason + " Until it is installed, " + product_name +
         " cannot be used.";
}

}  // namespace desktop_host
