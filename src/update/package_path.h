#ifndef KORVIXSDK_UPDATE_PACKAGE_PATH_H_
#define KORVIXSDK_UPDATE_PACKAGE_PATH_H_

#include <string>

namespace korvixsdk {

/// The folder for packages under the cache directory.
std::string PackageDirectory(const std::string& cache_dir);

/// The package's file in that folder, named by `PackageFileName` and joined by the rules of the
/// platform's path type: on Windows a name that is itself rooted, or has a drive, replaces the
/// folder.
std::string PackagePath(const std::string& cache_dir, const std::string& url);

/// What follows the last slash of the whole address, up to a question mark;
/// "update_package.bin" where nothing is left. Not cleaned in any other way.
std::string PackageFileName(const std::string& url);

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_PACKAGE_PATH_H_
