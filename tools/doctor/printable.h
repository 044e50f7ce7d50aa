#ifndef KORVIXSDK_TOOLS_DOCTOR_PRINTABLE_H_
#define KORVIXSDK_TOOLS_DOCTOR_PRINTABLE_H_

#include <nlohmann/json.hpp>
#include <string>

namespace doctor {

/// Texts of the service may hold line ends, or what a terminal would obey.
inline std::string OneLine(std::string text) {
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7f) character = ' ';
  }
  return text;
}

/// On one line when `indent` is negative. A service may send bytes that are not UTF-8, and a file
/// name may hold some.
inline std::string Dump(const nlohmann::ordered_json& json, int indent = -1) {
  return json.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_PRINTABLE_H_
