#ifndef KORVIXSDK_TESTS_PROCESSES_FILE_HOST_H_
#define KORVIXSDK_TESTS_PROCESSES_FILE_HOST_H_

#include <korvixsdk/korvixsdk.h>

#include <string>

#include "support/mock_package.h"

namespace korvixsdk::test {

/// A host on a machine without any stable property: its identifier comes from the fallback file.
class FileHost {
 public:
  FileHost(const std::string& cache_dir, const std::string& fallback_id_path = "");

  /// What `Init` answered.
  const Error& init() const { return init_; }
  Result<std::string> GetDeviceId() { return sdk_.GetDeviceId(); }
  Result<PreparedUpdate> Prepare(const std::string& url, const std::string& sha256 = "");
  Error Launch(const PreparedUpdate& prepared, const std::string& updater_path) {
    return sdk_.LaunchPreparedUpdate(prepared, updater_path);
  }
  std::string GetLastError() const { return sdk_.GetLastError(); }

 private:
  KorvixSDK sdk_;
  Error init_;
};

/// "guid-" and a GUID, whole.
bool IsFallbackId(const std::string& id);

/// `folder` and `name`, joined as the library joins them.
std::string Join(const std::string& folder, const std::string& name);

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_FILE_HOST_H_
