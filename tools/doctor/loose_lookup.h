#ifndef KORVIXSDK_TOOLS_DOCTOR_LOOSE_LOOKUP_H_
#define KORVIXSDK_TOOLS_DOCTOR_LOOSE_LOOKUP_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace doctor {

/// What the library takes for a member of an update reply, and where in the reply it looks.
struct LooseValue {
  std::string text{};
  /// Of the quotation mark before the name.
  std::size_t key_at = 0;
  /// What follows the name is a colon: it is a member's name, not a text.
  bool names_a_member = false;
};

std::optional<LooseValue> LookUpLoosely(std::string_view reply, std::string_view name);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_LOOSE_LOOKUP_H_
