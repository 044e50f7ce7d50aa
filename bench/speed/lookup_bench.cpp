#include <cstring>
#include <memory>

#include "benches.h"
#include "bodies.h"
#include "measure.h"
#include "network/update_check_endpoint.h"
#include "require.h"

namespace speed {
namespace {

/// One pass over the text for each quoted key: the least that nine searches cost.
std::array<const void*, kUpdateMembers.size()> FindByHand(
    const std::string& body, const std::array<std::string, kUpdateMembers.size()>& needles) {
  std::array<const void*, kUpdateMembers.size()> found{};
  for (std::size_t at = 0; at < needles.size(); ++at) {
    found[at] = memmem(body.data(), body.size(), needles[at].data(), needles[at].size());
  }
  return found;
}

std::array<std::string, kUpdateMembers.size()> Needles() {
  std::array<std::string, kUpdateMembers.size()> needles;
  for (std::size_t at = 0; at < needles.size(); ++at) {
    needles[at] = std::string("\"") + kUpdateMembers[at] + "\"";
  }
  return needles;
}

void RequireFound(const std::string& body, bool with_members) {
  const korvixsdk::UpdateInfo info = korvixsdk::ReadUpdateReply(body);
  Require(info.force_update == with_members && info.has_update == with_members &&
              (info.latest_version == "2.0.0") == with_members &&
              (info.min_supported_version == "1.0.0") == with_members &&
              info.publish_time.empty() != with_members &&
              info.update_content.empty() != with_members &&
              info.download_url.empty() != with_members && info.sha256.empty() != with_members &&
              info.message.empty(),
          "the offer in an update reply");
  for (const void* const place : FindByHand(body, Needles())) {
    Require((place != nullptr) == with_members, "the places of the nine members");
  }
}

void RegisterOurs(const std::string& name, std::size_t size, bool with_members) {
  const auto body = std::make_shared<const std::string>(UpdateReply(size, with_members));
  RequireFound(*body, with_members);
  Register(name + std::to_string(size), [body] { return korvixsdk::ReadUpdateReply(*body); });
}

void RegisterByHand(const std::string& name, std::size_t size, bool with_members) {
  const auto body = std::make_shared<const std::string>(UpdateReply(size, with_members));
  const auto needles =
      std::make_shared<const std::array<std::string, kUpdateMembers.size()>>(Needles());
  Register(name + std::to_string(size), [body, needles] { return FindByHand(*body, *needles); });
}

}  // namespace

void RegisterLookup() {
  for (const std::size_t size : {4 << 10, 1 << 20}) {
    RegisterOurs("lookup_present/ours/", size, true);
    RegisterByHand("lookup_present/memmem/", size, true);
    RegisterOurs("lookup_absent/ours/", size, false);
    RegisterByHand("lookup_absent/memmem/", size, false);
  }
  for (std::size_t size = 1 << 10; size <= 16 << 20; size *= 4) {
    RegisterOurs("growth_lookup/ours/", size, true);
  }
}

}  // namespace speed
