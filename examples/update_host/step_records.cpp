#include "step_records.h"

namespace update_host {
namespace {

/// A service may leave out what is not needed.
void Append(std::string& text, const char* label, const std::string& part) {
  if (!part.empty()) text += label + part;
}

}  // namespace

std::string Describe(const korvixsdk::ServerResult& answer) {
  return std::string(answer.success ? "accepted" : "the service rejected the report") + " (code " +
         std::to_string(answer.code) + "): " + answer.message;
}

std::string Describe(const korvixsdk::UpdateInfo& info) {
  std::string text = "no update is offered";
  if (info.has_update) {
    text = "version " + info.latest_version + " is offered, " +
           (info.force_update ? "mandatory" : "optional");
    Append(text, ", published ", info.publish_time);
    Append(text, ", at ", info.download_url);
    Append(text, ": ", info.update_content);
  }
  // A service that rejects the request may still send an offer.
  Append(text, "; the service says: ", info.message);
  return text;
}

std::string Describe(const korvixsdk::PreparedUpdate& prepared) {
  const bool compared = !prepared.expected_sha256.empty();
  return prepared.package_path + ", SHA-256 " + prepared.actual_sha256 +
         (compared ? ", as announced" : ", none was announced to compare it with");
}

nlohmann::ordered_json ToJson(const korvixsdk::ServerResult& answer) {
  return {{"success", answer.success},
          {"code", answer.code},
          {"message", answer.message},
          {"allowed", answer.allowed},
          {"server_time", answer.server_time}};
}

nlohmann::ordered_json ToJson(const korvixsdk::UpdateInfo& info) {
  return {{"has_update", info.has_update},
          {"force_update", info.force_update},
          {"latest_version", info.latest_version},
          {"min_supported_version", info.min_supported_version},
          {"publish_time", info.publish_time},
          {"update_content", info.update_content},
          {"download_url", info.download_url},
          {"sha256", info.sha256},
          {"message", info.message}};
}

nlohmann::ordered_json ToJson(const korvixsdk::PreparedUpdate& prepared) {
  return {{"ready", prepared.ready},
          {"sha256_verified", prepared.sha256_verified},
          {"download_url", prepared.download_url},
          {"expected_sha256", prepared.expected_sha256},
          {"actual_sha256", prepared.actual_sha256},
          {"package_path", prepared.package_path},
          {"reserved", prepared.reserved},
          {"message", prepared.message}};
}

}  // namespace update_host
