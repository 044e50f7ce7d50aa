// Stands in for a host's updater: it installs nothing and writes down what it was started with.
//
// The lines go to the package's path + ".updater-report.txt", or to the file that the environment
// variable KORVIXSDK_UPDATER_REPORT names. Exit status: 0, 64 without a package, or the library's
// error code.

#include <korvixsdk/korvixsdk.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using korvixsdk::Error;
using korvixsdk::Result;
using korvixsdk::ServiceRegistry;

constexpr int kWrongUsage = 64;

std::string ReportPath(const std::string& package_path) {
  const char* const chosen = std::getenv("KORVIXSDK_UPDATER_REPORT");
  return chosen != nullptr && *chosen != '\0' ? chosen : package_path + ".updater-report.txt";
}

Result<std::string> DescribeStart(const std::vector<std::string>& arguments,
                                  const ServiceRegistry& services) {
  const Result<std::string> package = services.file_system->ReadFile(arguments[1]);
  if (!package.ok()) return package;
  const Result<std::string> digest = services.crypto->Sha256Hex(package.value);
  if (!digest.ok()) return digest;

  std::ostringstream lines;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    lines << "argument " << i << ": " << arguments[i] << "\n";
  }
  std::error_code unknown;
  lines << "working directory: " << std::filesystem::current_path(unknown).u8string() << "\n"
        << "package size: " << package.value.size() << "\n"
        << "package sha256: " << digest.value << "\n";
  return {lines.str(), {}};
}

/// Written under a name of its own first, so that a reader never sees half of it.
Error Publish(const std::string& path, const std::string& content,
              const ServiceRegistry& services) {
  const std::string unfinished = path + "." + std::to_string(std::random_device()());
  const std::filesystem::path unfinished_path = std::filesystem::u8path(unfinished);
  Error error = services.file_system->WriteFile(unfinished, content);
  std::error_code failure;
  if (error.ok()) {
    std::filesystem::rename(unfinished_path, std::filesystem::u8path(path), failure);
    if (failure) error = {korvixsdk::kFileSystemError, "Failed to write file: " + path};
  }
  if (!error.ok()) std::filesystem::remove(unfinished_path, failure);
  return error;
}

Error Run(const std::vector<std::string>& arguments) {
  const std::shared_ptr<ServiceRegistry> services = korvixsdk::SdkFactory::CreateDefaultServices();
  const Result<std::string> report = DescribeStart(arguments, *services);
  if (!report.ok()) return report.error;
  return Publish(ReportPath(arguments[1]), report.value, *services);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "updater: no package was given; usage: updater PACKAGE\n";
    return kWrongUsage;
  }
  const Error error = Run(std::vector<std::string>(argv, argv + argc));
  if (!error.ok()) std::cerr << "updater: " << error.message << "\n";
  return error.code;
}
