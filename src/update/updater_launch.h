#ifndef KORVIXSDK_UPDATE_UPDATER_LAUNCH_H_
#define KORVIXSDK_UPDATE_UPDATER_LAUNCH_H_

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/file_system_provider.h"
#include "korvixsdk/prepared_update.h"

namespace korvixsdk {

/// Starts the updater on a prepared package; see `IUpdatePackageService::Launch`.
/// \param file_system may be null, which fails unless a mock path decides first.
Error LaunchUpdater(const PreparedUpdate& prepared, const std::string& updater_path,
                    IFileSystemProvider* file_system);

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_UPDATER_LAUNCH_H_
