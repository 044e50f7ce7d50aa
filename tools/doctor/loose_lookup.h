#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_LOOSE_LOOKUP_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_LOOSE_LOOKUP_H_

#include <korvixsdk/korvixsdk.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace update_host::doctor {

/// What the library takes for a member of an update reply. Its rules once more, so that the doctor
/// can say where in a reply the library looks; that both read the same is checked at every run.
struct LooseValue {
  std::string text{};
  /// Of the quotation mark before the name.
  std::size_t key_at = 0;
  /// What follows the name is a colon: it is a member's name, not a text.
  bool names_a_member = false;
};

std::optional<LooseValue> LookUpLoosely(std::string_view reply, std::string_view name);

/// The code that counts: the reply's where it is of digits only, otherwise 400.
std::int32_t LooseCode(std::string_view reply);

/// The offer as the library's network client reads it, before versions are compared.
korvixsdk::UpdateInfo ReadOffer(std::string_view reply);

}  // namespace update_host::doctor

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_LOOSE_LOOKUP_H_
