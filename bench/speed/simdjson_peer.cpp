#include <simdjson.h>

#include "json_peers.h"

namespace speed {
namespace {

template <typename Form, typename T>
bool Get(const simdjson::dom::object& object, const char* key, std::optional<T>& member) {
  Form value{};
  if (object.at_key(key).get(value) != simdjson::SUCCESS) return false;
  member.emplace(value);
  return true;
}

}  // namespace

void AddSimdJsonPadding(std::string& body) {
  body.reserve(body.size() + simdjson::SIMDJSON_PADDING);
}

korvixsdk::ResponseEnvelope ReadWithSimdJson(const std::string& body) {
  static simdjson::dom::parser parser;
  simdjson::dom::object object;
  constexpr bool kCopyFirst = false;
  if (parser.parse(body.data(), body.size(), kCopyFirst).get(object) != simdjson::SUCCESS) {
    return {};
  }
  korvixsdk::ResponseEnvelope envelope;
  std::optional<std::int64_t> code;
  envelope.accepted = Get<bool>(object, "allowed", envelope.allowed) &&
                      Get<bool>(object, "success", envelope.success) &&
                      Get<std::int64_t>(object, "code", code) &&
                      Get<std::string_view>(object, "msg", envelope.msg) &&
                      Get<std::int64_t>(object, "server_time", envelope.server_time);
  if (code) envelope.code = static_cast<std::int32_t>(*code);
  return envelope;
}

}  // namespace speed
