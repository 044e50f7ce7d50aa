#ifndef KORVIXSDK_TESTS_UNIT_CORE_CLIENT_SERVICE_BENCH_H_
#define KORVIXSDK_TESTS_UNIT_CORE_CLIENT_SERVICE_BENCH_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/default_client_service.h"
#include "support/fakes.h"
#include "support/host_config.h"
#include "support/recording_logger.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {

using Lines = std::vector<std::string>;

/// A core service over fakes only. The registry does not own the service, so nothing is left
/// behind.
struct ClientServiceBench {
  ClientServiceBench() {
    services->logger = logger;
    services->time_provider = time;
    services->device_id_provider = device_id;
    services->network_client = network;
    services->update_policy = policy;
    services->update_package_service = packages;
  }

  SDKConfig Config() const { return LeastConfig(folder.Entry("cache")); }

  /// Initialises with `Config()` and forgets the lines of it.
  void Init() {
    const Error error = service.Init(Config());
    ASSERT_TRUE(error.ok()) << error.message;
    logger->lines.clear();
  }

  /// Leaves `message` as the last error.
  void FailGetDeviceId(const std::string& message) {
    const Result<std::string> before = device_id->answer;
    device_id->answer = {{}, Error{kPlatformError, message}};
    EXPECT_FALSE(service.GetDeviceId().ok());
    device_id->answer = before;
    device_id->calls = 0;
    logger->lines.clear();
  }

  TempFolder folder;
  std::shared_ptr<RecordingLogger> logger = std::make_shared<RecordingLogger>();
  std::shared_ptr<FakeTime> time = std::make_shared<FakeTime>();
  std::shared_ptr<FakeDeviceId> device_id = std::make_shared<FakeDeviceId>();
  std::shared_ptr<FakeNetwork> network = std::make_shared<FakeNetwork>();
  std::shared_ptr<FakePolicy> policy = std::make_shared<FakePolicy>();
  std::shared_ptr<FakePackages> packages = std::make_shared<FakePackages>();
  std::shared_ptr<ServiceRegistry> services = std::make_shared<ServiceRegistry>();
  DefaultClientService service{services};
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_UNIT_CORE_CLIENT_SERVICE_BENCH_H_
