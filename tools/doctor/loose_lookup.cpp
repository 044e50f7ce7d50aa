#include "doctor/loose_lookup.h"

#include <utility>

#include "network/json_member_lookup.h"
#include "platform/ascii.h"

namespace doctor {

std::optional<LooseValue> LookUpLoosely(std::string_view reply, std::string_view name) {
  std::optional<std::string> text = korvixsdk::FindJsonMember(reply, name);
  if (!text) return std::nullopt;
  LooseValue value;
  value.text = std::move(*text);
  const std::string quoted = '"' + std::string(name) + '"';
  value.key_at = reply.find(quoted);
  const std::string_view behind = reply.substr(value.key_at + quoted.size());
  value.names_a_member = korvixsdk::TrimAsciiLeft(behind).front() == ':';
  return value;
}

}  // namespace doctor
