#include "doctor/loose_lookup.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace update_host::doctor {
namespace {

constexpr std::int32_t kAccepted = 400;
constexpr std::string_view kWhiteSpace = " \t\r\n\f\v";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

/// `text` begins behind the quotation mark.
std::string QuotedText(std::string_view text) {
  constexpr std::string_view kLetters = "bfnrt";
  constexpr std::string_view kControls = "\b\f\n\r\t";
  std::string content;
  bool escaped = false;
  for (const char character : text) {
    if (escaped) {
      const std::size_t letter = kLetters.find(character);
      content += letter == std::string_view::npos ? character : kControls[letter];
      escaped = false;
    } else if (character == '\\') {
      escaped = true;
    } else if (character == '"') {
      break;
    } else {
      content += character;
    }
  }
  return content;
}

}  // namespace

std::optional<LooseValue> LookUpLoosely(std::string_view reply, std::string_view name) {
  LooseValue value;
  const std::string quoted = '"' + std::string(name) + '"';
  value.key_at = reply.find(quoted);
  if (value.key_at == std::string_view::npos) return std::nullopt;
  const std::size_t behind = value.key_at + quoted.size();
  const std::size_t colon = reply.find(':', behind);
  if (colon == std::string_view::npos) return std::nullopt;
  value.names_a_member = Trimmed(reply.substr(behind, colon - behind)).empty();
  const std::size_t at = reply.find_first_not_of(kWhiteSpace, colon + 1);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view rest = reply.substr(at);
  value.text = rest.front() == '"' ? QuotedText(rest.substr(1))
                                   : std::string(Trimmed(rest.substr(0, rest.find_first_of(",}"))));
  return value;
}

std::int32_t LooseCode(std::string_view reply) {
  const std::optional<LooseValue> value = LookUpLoosely(reply, "code");
  if (!value) return kAccepted;
  const std::string_view digits = Trimmed(value->text);
  std::int32_t code = 0;
  const char* const end = digits.data() + digits.size();
  const bool only_digits = !digits.empty() && std::all_of(digits.begin(), digits.end(), [](char c) {
    return c >= '0' && c <= '9';
  });
  if (!only_digits || std::from_chars(digits.data(), end, code).ec != std::errc{}) return kAccepted;
  return code;
}

korvixsdk::UpdateInfo ReadOffer(std::string_view reply) {
  const auto text = [reply](const char* name) {
    return LookUpLoosely(reply, name).value_or(LooseValue{}).text;
  };
  korvixsdk::UpdateInfo offer;
  const std::string forced = text("force_update");
  offer.force_update = Trimmed(forced) == "true" || Trimmed(forced) == "1";
  offer.latest_version = text("version");
  offer.min_supported_version = text("min_supported_version");
  offer.publish_time = text("publish_time");
  offer.update_content = text("update_content");
  offer.download_url = text("download_url");
  offer.sha256 = text("sha256");
  if (LooseCode(reply) != kAccepted) {
    offer.message = text("msg");
    if (offer.message.empty()) offer.message = "Server rejected update request";
  }
  return offer;
}

}  // namespace update_host::doctor
