#include <string>

#include "core/version_rules.h"
#include "doctor/verdicts.h"

namespace doctor {
namespace {

bool IsBelow(const std::string& version, const std::string& other) {
  return korvixsdk::IsNewerVersion(version, other);
}

/// A host that has taken the offer would have to update again, and again.
void CheckMinimum(const korvixsdk::UpdateInfo& offer, Findings& findings) {
  const std::string& version = offer.latest_version;
  const std::string& minimum = offer.min_supported_version;
  if (version.empty() || !IsBelow(version, minimum)) return;
  findings.Fail("version " + version + " is below \"min_supported_version\" " + minimum +
                    ": who has taken it must update again, without end",
                "Offer at least the minimum, or lower the minimum");
}

/// \param must_update the host is below the minimum.
void CheckDirection(const korvixsdk::UpdateInfo& offer, const std::string& host, bool must_update,
                    Findings& findings) {
  const std::string& version = offer.latest_version;
  if (version.empty() && must_update && offer.download_url.empty()) {
    findings.Fail("the host must update to " + offer.min_supported_version +
                      ", and there is no \"download_url\"",
                  "Send version and address with the minimum");
  }
  const bool mandatory = must_update || offer.force_update;
  if (version.empty() || !mandatory || !IsBelow(version, host)) return;
  findings.Fail("the mandatory version " + version + " is older than the host's " + host +
                    (must_update ? ": hosts go back to it" : ": hosts do not go back to it"),
                "Offer a newer version; to undo a release, publish its predecessor under a higher "
                "number");
}

std::string Decision(const korvixsdk::UpdateInfo& offer, const std::string& host,
                     bool must_update) {
  const std::string& target =
      offer.latest_version.empty() ? offer.min_supported_version : offer.latest_version;
  if (!must_update && !IsBelow(host, offer.latest_version)) return "no update from " + host;
  return (must_update || offer.force_update ? "mandatory" : "optional") +
         std::string(" update from ") + host + " to " + target;
}

}  // namespace

Check CheckDecision(const korvixsdk::UpdateInfo& offer, const ReplyContext& context) {
  const char* const id = "update.decision";
  const std::string& host = context.host_version;
  Findings findings;
  CheckMinimum(offer, findings);
  if (host.empty()) {
    const Check check = findings.As(id, {});
    return check.status == Status::kPass ? NotTried(id, "the host's version is not known") : check;
  }
  const bool must_update = IsBelow(host, offer.min_supported_version);
  CheckDirection(offer, host, must_update, findings);
  return findings.As(id, Decision(offer, host, must_update));
}

}  // namespace doctor
