#include "core/default_client_service.h"

#include <filesystem>
#include <optional>
#include <utility>

#include "core/log_line.h"
#include "core/version_rules.h"
#include "network/default_network_client.h"
#include "network/http_transport.h"
#include "platform/error_text.h"
#include "platform/fail.h"
#include "platform/fallback_id_file.h"
#include "platform/native_path.h"
#include "platform/or_else.h"
#include "platform/path_status.h"
#include "platform/service_call.h"

namespace korvixsdk {
namespace {

constexpr char kNoCacheDirectory[] = "Failed to create cache directory: ";
constexpr char kNoNetworkClient[] = "Network client is not configured";
constexpr char kNoPackageService[] = "Update package service is not configured";
constexpr char kDeviceIdProvider[] = "Device id provider";
constexpr char kNetworkClient[] = "Network client";
constexpr char kPackageService[] = "Update package service";

const char* BoolText(bool value) { return value ? "true" : "false"; }

/// The first required text of the configuration that is empty, as the message that says so.
const char* MissingField(const SDKConfig& config) {
  if (config.product_id.empty()) return "SDKConfig.product_id must not be empty";
  if (config.version.empty()) return "SDKConfig.version must not be empty";
  if (config.cache_dir.empty()) return "SDKConfig.cache_dir must not be empty";
  return nullptr;
}

/// By the system itself: `IFileSystemProvider` is for packages, and one of the host's need not know
/// folders at all. Initialisation does not depend on it.
bool CreateCacheDirectory(const std::string& cache_dir) {
  const std::optional<std::filesystem::path> native = NativePathFromNarrow(cache_dir);
  return native && CreateDirectoryChain(*native);
}

}  // namespace

DefaultClientService::DefaultClientService(std::shared_ptr<ServiceRegistry> services)
    : services_(std::move(services)) {}

Error DefaultClientService::Init(const SDKConfig& config) {
  return OrElse([&] { return CheckAndAdopt(config); },
                [](const char*) { return InitOutOfMemoryError(); });
}

// Three ways through. What fails at the checks has changed nothing. What fails at the cache
// directory has adopted the configuration already, and leaves the service as initialised as it was
// before. What gets through initialises it, for good: no later failure takes that back, so that a
// host that tries another configuration keeps a service that works.
Error DefaultClientService::CheckAndAdopt(const SDKConfig& config) {
  if (const char* const missing = MissingField(config)) {
    LogError(logger(), {"Init failed: ", missing});
    return Fail(kInvalidArgument, missing);
  }
  // Nobody asks the clock. It stands for a registry that somebody has filled; every other service
  // is looked for by the operation that needs it, so that a host may leave out what it does not
  // use.
  if (!services_ || !services_->time_provider) {
    LogError(logger(), {"Init failed: required services are not configured"});
    return Fail(kInvalidState, "Required services are not configured");
  }
  // What memory may not suffice for comes before what shows.
  SDKConfig copy = config;
  SetDefaultFallbackIdPath(config.fallback_device_id_path);
  config_ = std::move(copy);
  last_error_.clear();
  LogInfo(logger(),
          {"Init requested for product_id=", config.product_id, ", version=", config.version});

  if (!CreateCacheDirectory(config.cache_dir)) {
    Error error{kInvalidState, kNoCacheDirectory + config.cache_dir};
    LogError(logger(), {error.message});
    return error;
  }
  // The address is no part of `INetworkClient`: a client of the host's knows its service by itself.
  const auto client = std::dynamic_pointer_cast<DefaultNetworkClient>(services_->network_client);
  if (client) client->server_base_url = config.server_base_url;
  initialized_ = true;
  last_error_.clear();
  LogInfo(logger(), {"SDK init success, cache_dir=", config.cache_dir});
  return Error{};
}

Result<std::string> DefaultClientService::GetDeviceId() {
  Result<std::string> result;
  if (!IsInitialized(&result.error)) return result;
  result = ResolveDeviceId();
  if (!result.ok()) {
    RecordFailure("GetDeviceId", result.error.message);
    return {{}, std::move(result.error)};
  }
  last_error_.clear();
  LogInfo(logger(), {"GetDeviceId succeeded"});
  result.error = Error{};  // A provider may have put a message beside code 0.
  return result;
}

// Logs nothing and keeps no error: a report is made in passing, and must not hide what the last
// update operation had to say.
Result<ServerResult> DefaultClientService::ReportInstall() {
  Result<ServerResult> result;
  if (!IsInitialized(&result.error)) return result;
  if (!services_ || !services_->network_client) {
    return Fail(kInvalidState, kNoNetworkClient);
  }
  // A check goes on without an identifier; a report of an unknown machine would count for nothing.
  Result<std::string> device_id = ResolveDeviceId();
  if (!device_id.ok()) return {{}, std::move(device_id.error)};
  return CallService(kNetworkClient, [&] {
    return services_->network_client->ReportInstall(config_.product_id, device_id.value,
                                                    config_.version);
  });
}

// What is copied here are the texts of the exchange, so a lack of memory counts as its failure.
Result<UpdateInfo> DefaultClientService::CheckForUpdate() {
  return OrElse([this] { return CheckAndDecide(); },
                [this](const char*) {
                  Error error = TransportOutOfMemoryError();
                  RecordFailure("CheckForUpdate", error.message);
                  return Result<UpdateInfo>{{}, std::move(error)};
                });
}

Result<UpdateInfo> DefaultClientService::CheckAndDecide() {
  Result<UpdateInfo> result;
  if (!IsInitialized(&result.error)) return result;
  if (!services_ || !services_->network_client) {
    // A success with a text, on purpose: a host without a network simply sees no update.
    last_error_ = kNoNetworkClient;
    LogWarning(logger(), {kNoNetworkClient});
    result.value.message = kNoNetworkClient;
    return result;
  }
  // Without an identifier the check goes on; the request then carries an empty one.
  const UpdateCheckRequest request{config_.product_id, config_.version, ResolveDeviceId().value};
  // Of the identifier and of the address a line only says that there is one: logs are passed
  // around.
  LogInfo(logger(), {"CheckForUpdate request started product_id=", request.product_id,
                     ", version=", request.version,
                     ", device_id_present=", BoolText(!request.device_id.empty())});
  result = CallService(kNetworkClient,
                       [&] { return services_->network_client->CheckForUpdate(request); });
  if (!result.ok()) {
    RecordFailure("CheckForUpdate", result.error.message);
    return {{}, std::move(result.error)};
  }
  const UpdateInfo& received = result.value;
  LogInfo(logger(), {"CheckForUpdate response latest_version=", received.latest_version,
                     ", min_supported_version=", received.min_supported_version,
                     ", force_update=", BoolText(received.force_update),
                     ", download_url_present=", BoolText(!received.download_url.empty()),
                     ", last_error_present=", BoolText(!received.message.empty())});
  if (Error undecided = DecideUpdate(config_.version, services_->update_policy.get(), result.value);
      !undecided.ok()) {
    RecordFailure("CheckForUpdate", undecided.message);
    return {{}, std::move(undecided)};
  }
  // To reject a request is an answer, not a failure, but its text is what a host will ask for.
  last_error_ = result.value.message;
  if (result.value.has_update) {
    LogInfo(logger(), {"CheckForUpdate detected a newer version: ", result.value.latest_version});
  } else {
    LogInfo(logger(), {"CheckForUpdate found no newer version"});
  }
  result.error = Error{};
  return result;
}

Result<PreparedUpdate> DefaultClientService::PrepareUpdate(const UpdateInfo& info) {
  Result<PreparedUpdate> result;
  if (!IsInitialized(&result.error)) return result;
  if (!services_ || !services_->update_package_service) {
    return Fail(kInvalidState, kNoPackageService);
  }
  result = CallService(kPackageService, [&] {
    return services_->update_package_service->Prepare(info, config_.cache_dir);
  });
  if (!result.ok()) {
    // The value goes with the failure: after a hash mismatch it tells path and digests.
    RecordFailure("PrepareUpdate", result.error.message);
    return result;
  }
  last_error_.clear();
  LogInfo(logger(), {"PrepareUpdate succeeded: ", result.value.package_path});
  return result;
}

Error DefaultClientService::LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                                 const std::string& updater_path) {
  Error error;
  if (!IsInitialized(&error)) return error;
  if (!services_ || !services_->update_package_service) {
    return Fail(kInvalidState, kNoPackageService);
  }
  error = CallService(kPackageService, [&] {
    return services_->update_package_service->Launch(prepared, updater_path);
  });
  if (!error.ok()) {
    RecordFailure("LaunchPreparedUpdate", error.message);
    return error;
  }
  last_error_.clear();
  LogInfo(logger(), {"LaunchPreparedUpdate succeeded"});
  return Error{};
}

std::string DefaultClientService::GetLastError() const {
  return OrElse([this] { return last_error_; }, std::string());
}

bool DefaultClientService::IsInitialized(Error* error) const {
  if (initialized_) return true;
  if (error != nullptr) *error = Fail(kInvalidState, "KorvixSDK is not initialized");
  return false;
}

Result<std::string> DefaultClientService::ResolveDeviceId() {
  if (services_ && services_->device_id_provider) {
    Result<std::string> device_id = CallService(
        kDeviceIdProvider, [this] { return services_->device_id_provider->GetDeviceId(); });
    if (!device_id.ok()) return {{}, std::move(device_id.error)};
    if (!device_id.value.empty()) return device_id;
    // An empty identifier is a provider that was not set up.
  }
  return Fail(kInvalidState, "Device id provider is not configured");
}

void DefaultClientService::RecordFailure(const char* operation, const std::string& message) {
  last_error_ = OrElse([&] { return message; }, std::string());
  LogWarning(logger(), {operation, " failed: ", message});
}

ILogger* DefaultClientService::logger() const {
  return services_ ? services_->logger.get() : nullptr;
}

Error InitOutOfMemoryError() { return ErrorOf(kInvalidState, {"Not enough memory to initialize"}); }

}  // namespace korvixsdk
