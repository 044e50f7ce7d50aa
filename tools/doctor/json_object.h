#ifndef KORVIXSDK_TOOLS_DOCTOR_JSON_OBJECT_H_
#define KORVIXSDK_TOOLS_DOCTOR_JSON_OBJECT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace doctor {

/// A member of the outermost object, and where it stands in the text.
struct JsonMember {
  std::string key{};
  /// Of the key's opening quotation mark.
  std::size_t key_at = 0;
  /// The value as it is written, and where it ends.
  std::string raw{};
  std::size_t end = 0;
};

/// A text that is one JSON object, or the reason why it is none.
struct JsonObject {
  std::string problem{};
  /// The problem is one of the doctor's reader alone: another reader may take the text.
  bool undecided = false;
  std::vector<JsonMember> members{};
  /// 1 for an object without objects or arrays inside.
  int depth = 0;

  /// The first of this name; null when there is none.
  const JsonMember* Find(std::string_view key) const;
  std::size_t Count(std::string_view key) const;
};

/// \param text valid UTF-8; see `Readable`.
JsonObject ReadJsonObject(std::string_view text);

bool IsUtf8(std::string_view text);

/// The text itself, or, when it is not UTF-8, the text with a question mark for every byte that is
/// not ASCII. Those stand inside texts only, wherever the rest is JSON.
std::string Readable(std::string_view text);

/// The content of a raw value that is a text.
std::optional<std::string> TextOf(const std::string& raw);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_JSON_OBJECT_H_
