#include "update/package_path.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "platform/native_path.h"

namespace korvixsdk {
namespace {

constexpr char kUpdatesFolder[] = "updates";
constexpr char kDefaultName[] = "update_package.bin";

/// Text that is no path is joined as text: the result is no path either, and the operation that
/// gets it fails with its own message.
std::string Join(const std::string& folder, const std::string& name) {
  const auto native_folder = NativePathFromNarrow(folder);
  const auto native_name = NativePathFromNarrow(name);
  if (native_folder && native_name) {
    const std::optional<std::string> joined = NarrowFromNativePath(*native_folder / *native_name);
    if (joined) return *joined;
  }
  return folder + static_cast<char>(std::filesystem::path::preferred_separator) + name;
}

}  // namespace

std::string PackageDirectory(const std::string& cache_dir) {
  return Join(cache_dir, kUpdatesFolder);
}

std::string PackagePath(const std::string& cache_dir, const std::string& url) {
  return Join(PackageDirectory(cache_dir), PackageFileName(url));
}

// The last slash of the whole address, a query's included: services that answer for many packages
// at one path name them there. The name is the service's, whom the host trusts with what it runs.
std::string PackageFileName(const std::string& url) {
  const std::size_t slash = url.rfind('/');
  if (slash == std::string::npos) return kDefaultName;
  std::string name = url.substr(slash + 1);
  name.erase(std::min(name.find('?'), name.size()));
  return name.empty() ? kDefaultName : name;
}

}  // namespace korvixsdk
