#ifndef KORVIXSDK_SDK_CONFIG_H_
#define KORVIXSDK_SDK_CONFIG_H_

/// \file
/// \brief `SDKConfig`: all that a host tells the library.

#include <memory>
#include <string>

namespace korvixsdk {

class ILogger;
struct ServiceRegistry;

/// The configuration for `KorvixSDK::Init`, which keeps a copy. The library has no other settings:
/// no files, no environment variables, nothing in the Windows registry. (libcurl reads some
/// environment variables: "http_proxy" and its relatives, and on Linux "SSLKEYLOGFILE".)
///
/// A copy has the same logger and the same registry, as those two are shared pointers.
struct SDKConfig {
  /// The identifier of the product, UTF-8. Must not be empty. Sent with every request.
  std::string product_id{};
  /// The version of the host application itself, such as "1.4.0". Must not be empty. Sent with
  /// every request, and compared with the version that the service offers.
  std::string version{};
  /// The directory for packages, which are stored in its folder "updates". Must not be empty.
  /// `Init` creates it and all missing folders above it. On Windows narrow text in the code page
  /// that the process uses for files (UTF-8 if the runtime's locale is UTF-8), on Linux bytes.
  std::string cache_dir{};
  /// The base address of the service, such as "https://updates.example.com/app". If it begins with
  /// "mock://", the built-in mock server answers. If it is empty, every request fails with
  /// `kNetworkError`. Only the default network client uses it.
  std::string server_base_url{};
  /// The file in which a generated device identifier is kept, for machines whose GUID and name
  /// cannot be read. UTF-8, also on Windows. Every `Init` sets it for the whole process, even if it
  /// is empty.
  std::string fallback_device_id_path{};
  /// Receives the library's log lines. If it is null, the logger of the registry is used. If it is
  /// set and `services` is not, `Init` makes new default services.
  std::shared_ptr<ILogger> logger{};
  /// The host's own services; `Init` fills empty members with the defaults. If it is null, the
  /// facade keeps the services that it has.
  std::shared_ptr<ServiceRegistry> services{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SDK_CONFIG_H_
