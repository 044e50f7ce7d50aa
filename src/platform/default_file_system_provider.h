#ifndef KORVIXSDK_PLATFORM_DEFAULT_FILE_SYSTEM_PROVIDER_H_
#define KORVIXSDK_PLATFORM_DEFAULT_FILE_SYSTEM_PROVIDER_H_

#include <string>

#include "korvixsdk/file_system_provider.h"

namespace korvixsdk {

/// The file system, by way of the standard library. No state; any thread.
class DefaultFileSystemProvider : public IFileSystemProvider {
 public:
  bool Exists(const std::string& path) override;
  Result<std::string> ReadFile(const std::string& path) override;
  Error WriteFile(const std::string& path, const std::string& content) override;
  Error CreateDirectories(const std::string& path) override;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_DEFAULT_FILE_SYSTEM_PROVIDER_H_
