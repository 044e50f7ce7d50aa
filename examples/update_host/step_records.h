#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_RECORDS_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_RECORDS_H_

#include <korvixsdk/korvixsdk.h>

#include <nlohmann/json.hpp>
#include <string>

namespace update_host {

/// What a successful step answered, in words for a person.
inline std::string Describe(const std::string& device_id) { return device_id; }
std::string Describe(const korvixsdk::ServerResult& answer);
std::string Describe(const korvixsdk::UpdateInfo& info);
std::string Describe(const korvixsdk::PreparedUpdate& prepared);

/// The same for programs: every member of the record, in its order.
inline nlohmann::ordered_json ToJson(const std::string& device_id) { return device_id; }
nlohmann::ordered_json ToJson(const korvixsdk::ServerResult& answer);
nlohmann::ordered_json ToJson(const korvixsdk::UpdateInfo& info);
nlohmann::ordered_json ToJson(const korvixsdk::PreparedUpdate& prepared);

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_RECORDS_H_
