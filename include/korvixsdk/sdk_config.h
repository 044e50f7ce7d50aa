#ifndef KORVIXSDK_SDK_CONFIG_H_
#define KORVIXSDK_SDK_CONFIG_H_

/// \file
/// \brief `SDKConfig`: all that a host tells the library.

#include <memory>
#include <string>

namespace korvixsdk {

class ILogger;
struct ServiceRegistry;

/// The configuration handed to `KorvixSDK::Init`, which keeps a copy. The library has no other
/// configuration: no files, no environment variables, no registry settings. (libcurl takes proxies
/// from the environment, "http_proxy" and its relatives, and on Linux "SSLKEYLOGFILE".)
///
/// Copying copies the two shared pointers; both copies then share one logger and one registry.
struct SDKConfig {
  /// The product's identifier, UTF-8. Must not be empty. Sent with every service request.
  std::string product_id{};
  /// The host application's own version, such as "1.4.0". Must not be empty. Sent with every
  /// service request and compared with the offered version.
  std::string version{};
  /// Directory for downloaded packages, which go into its folder "updates". Must not be empty;
  /// created by `Init` with all missing parents. Narrow text in the process's file-API code page
  /// on Windows (UTF-8 when the runtime's locale is UTF-8), bytes as they are elsewhere.
  std::string cache_dir{};
  /// Base address of the service, such as "https://updates.example.com/app". An address that
  /// begins with "mock://" selects the built-in mock server. Empty makes every service request
  /// fail with `kNetworkError`. Only the default network client reads it.
  std::string server_base_url{};
  /// File that keeps the generated device identifier when the machine offers no stable property.
  /// UTF-8 on every platform. Every `Init` publishes it for the whole process, also when empty.
  std::string fallback_device_id_path{};
  /// Receives the library's log lines; null keeps the registry's logger. Without `services` a
  /// logger makes `Init` start from new default services.
  std::shared_ptr<ILogger> logger{};
  /// The host's own services; empty members are filled with the defaults. Null keeps the facade's.
  std::shared_ptr<ServiceRegistry> services{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SDK_CONFIG_H_
