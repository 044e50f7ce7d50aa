#include "faults/whole_life.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace korvixsdk::test {
namespace {

struct Failure {
  std::int32_t code;
  /// The message, or its fixed beginning where a path, a status or a text follows.
  std::string message;
};

const std::vector<Failure> kInitFailures = {{kInvalidState, "Failed to create cache directory: "},
                                            {kInvalidState, "Not enough memory to initialize"}};
const std::vector<Failure> kDeviceIdFailures = {
    {kPlatformError, "No stable device fingerprint sources are available"},
    {kPlatformError, "Failed to generate fallback device id"},
    {kPlatformError, "Failed to create fallback device id directory"},
    {kPlatformError, "Failed to write fallback device id"},
    {kPlatformError, "Failed to persist fallback device id"}};
const std::vector<Failure> kRequestFailures = {
    {kNetworkError, "Failed to initialize libcurl"},
    {kNetworkError, "Failed to URL-encode query parameter"},
    {kNetworkError, "HTTP request failed: "},
    {kNetworkError, "HTTP status is not successful: 0"}};
const std::vector<Failure> kInstallFailures = {
    {kInvalidResponse, "invalid JSON or install response schema"}};
const std::vector<Failure> kPrepareFailures = {
    {kNetworkError, "Failed to initialize libcurl for update download"},
    {kNetworkError, "Update download failed: "},
    {kNetworkError, "Update download returned HTTP status 0"},
    {kFileSystemError, "Failed to create directories: "},
    {kFileSystemError, "Failed to create parent directories: "},
    {kFileSystemError, "Failed to open file for write: "},
    {kFileSystemError, "Failed to write file: "},
    {kPlatformError, "BCryptOpenAlgorithmProvider failed"},
    {kPlatformError, "BCryptGetProperty(object_length) failed"},
    {kPlatformError, "BCryptGetProperty(hash_length) failed"},
    {kPlatformError, "BCryptCreateHash failed"},
    {kPlatformError, "BCryptHashData failed"},
    {kPlatformError, "BCryptFinishHash failed"}};
const std::vector<Failure> kLaunchFailures = {
    {kInvalidState, "Prepared update package does not exist"},
    {kNotFound, "Updater executable was not found"},
    {kInvalidState, "Failed to launch updater process"}};

void ExpectOneOf(const char* operation, const Error& error,
                 const std::vector<std::vector<Failure>>& groups) {
  if (error.ok()) {
    EXPECT_EQ(error.message, "") << operation;
    return;
  }
  for (const std::vector<Failure>& failures : groups) {
    for (const Failure& failure : failures) {
      if (error.code == failure.code && error.message.rfind(failure.message, 0) == 0) return;
    }
  }
  ADD_FAILURE() << operation << " answered " << error.code << " " << error.message.substr(0, 200);
}

}  // namespace

bool LifeAnswers::ok() const {
  return init.ok() && device_id.ok() && install.ok() && check.ok() && prepare.ok() && launch.ok();
}

LifeAnswers LiveOnce(KorvixSDK& sdk, const SDKConfig& config, const std::string& updater,
                     const LifeAnswers* good) {
  LifeAnswers answers;
  answers.init = sdk.Init(config);
  answers.device_id = sdk.GetDeviceId();
  answers.install = sdk.ReportInstall();
  answers.check = sdk.CheckForUpdate();
  const bool checked = good == nullptr || answers.check.ok();
  answers.prepare = sdk.PrepareUpdate(checked ? answers.check.value : good->check.value);
  const bool prepared = good == nullptr || answers.prepare.ok();
  answers.launch =
      sdk.LaunchPreparedUpdate(prepared ? answers.prepare.value : good->prepare.value, updater);
  return answers;
}

void ExpectDocumentedAnswers(const LifeAnswers& answers) {
  ExpectOneOf("Init", answers.init, {kInitFailures});
  ExpectOneOf("GetDeviceId", answers.device_id.error, {kDeviceIdFailures});
  ExpectOneOf("ReportInstall", answers.install.error,
              {kDeviceIdFailures, kRequestFailures, kInstallFailures});
  ExpectOneOf("CheckForUpdate", answers.check.error, {kRequestFailures});
  ExpectOneOf("PrepareUpdate", answers.prepare.error, {kPrepareFailures});
  ExpectOneOf("LaunchPreparedUpdate", answers.launch, {kLaunchFailures});
  EXPECT_TRUE(answers.device_id.ok() || answers.device_id.value.empty());
  EXPECT_TRUE(answers.check.ok() || answers.check.value.latest_version.empty());
  EXPECT_EQ(answers.prepare.value.ready, answers.prepare.ok());
}

}  // namespace korvixsdk::test
