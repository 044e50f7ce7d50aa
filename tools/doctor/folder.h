#ifndef KORVIXSDK_TOOLS_DOCTOR_FOLDER_H_
#define KORVIXSDK_TOOLS_DOCTOR_FOLDER_H_

#include <cstdint>
#include <optional>
#include <string>

namespace doctor {

/// An entry of a folder, both in the encoding of `SDKConfig::cache_dir`.
std::string Entry(const std::string& folder, const std::string& name);

/// Bytes that this user may still write; nothing when the system does not tell.
std::optional<std::uint64_t> FreeSpace(const std::string& folder);

/// Removes a file, or a folder with all it holds, as far as that is possible.
void Remove(const std::string& path);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_FOLDER_H_
