#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "core/default_services.h"
#include "faults/whole_life.h"
#include "faults/wrapped_curl.h"
#include "faults/wrapped_machine.h"
#include "platform/fallback_id_file.h"
#include "platform/placeholder_device_id_provider.h"
#include "support/failing_calls.h"
#include "support/fakes.h"
#include "support/host_config.h"
#include "support/open_handles.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::LifeAnswers;
using test::Script;
using test::ScriptedServer;
using test::TempFolder;

/// More calls than a whole life makes; a loop that comes here does not end by itself.
constexpr int kTooMany = 2000;

/// One service for both requests and the package: every reply holds all that any of them looks for.
class WholeLife : public testing::TestWithParam<FailingCall::Span> {
 protected:
  WholeLife() {
    test::wrapped_machine = {};
    test::wrapped_curl = {};
#ifdef _WIN32
    test::wrapped_machine.record_processes = true;
    updater_ = "C:\\windows\\system32\\cmd.exe";
#else
    updater_ = "/bin/true";
#endif
    config_ = test::HostConfig(folder_, server_.address());
    config_.fallback_device_id_path = folder_.Entry("ids/device-id");
    config_.services = services_.get();
  }
  ~WholeLife() override {
    test::wrapped_machine = {};
    test::wrapped_curl = {};
    SetDefaultFallbackIdPath("");
  }

  /// Fails one call after the other until none is left to fail; after each failure everything must
  /// work again.
  void FailOneAfterTheOther() {
    KorvixSDK sdk;
    ASSERT_TRUE(sdk.Init(config_).ok());
    const LifeAnswers good = test::LiveOnce(sdk, config_, updater_, nullptr);
    ASSERT_TRUE(good.ok()) << good.prepare.error.message << good.launch.message;
    // Some more lives, after which what is made once and kept has been made.
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(test::LiveOnce(sdk, config_, updater_, nullptr).ok());
    handles_ = test::OpenHandlesAtRest();
    bool happened = true;
    int nth = 0;
    while (happened && ++nth < kTooMany && !HasFailure()) {
      SCOPED_TRACE("call " + std::to_string(nth));
      happened = FailWithoutLeak(sdk, good, nth);
    }
    EXPECT_GT(nth, 30) << "hardly a call was wrapped";
    EXPECT_LT(nth, kTooMany);
  }

  /// A handle that is left open is left open each time. What is made at its first use and kept,
  /// such as the event of a lock, is not.
  bool FailWithoutLeak(KorvixSDK& sdk, const LifeAnswers& good, int nth) {
    for (int attempt = 0; attempt < 3; ++attempt) {
      const bool happened = FailOnce(sdk, good, nth);
      if (test::OpenHandlesFallTo(handles_) || HasFailure()) return happened;
      handles_ = test::OpenHandlesAtRest();
    }
    ADD_FAILURE() << "a handle is left open each time, " << handles_ << " by now";
    return false;
  }

  bool FailOnce(KorvixSDK& sdk, const LifeAnswers& good, int nth) {
    BeforeEachLife();
    const int resources = test::OpenResources();
    bool happened = false;
    LifeAnswers answers;
    {
      const FailingCall fail("*", nth, GetParam());
      answers = test::LiveOnce(sdk, config_, updater_, &good);
      happened = fail.happened();
    }
    test::ExpectDocumentedAnswers(answers);
    EXPECT_EQ(test::OpenResources(), resources)
        << "something of libcurl's or the hash is left open";
    const LifeAnswers next = test::LiveOnce(sdk, config_, updater_, nullptr);
    EXPECT_TRUE(next.ok()) << next.init.message << next.device_id.error.message
                           << next.prepare.error.message << next.launch.message;
    return happened;
  }

  virtual void BeforeEachLife() { std::filesystem::remove_all(folder_.path() / "cache"); }

  TempFolder folder_;
  ScriptedServer server_{Script::Response(
      200, R"({"code":400,"allowed":true,"msg":"hello","version":"2.0","download_url":")"
           R"(mock://package-ok"})")};
  test::RegistryOwner services_{std::make_shared<ServiceRegistry>()};
  SDKConfig config_;
  std::string updater_;
  long handles_ = 0;
};

TEST_P(WholeLife, EveryCallThatFailsIsADocumentedFailure) { FailOneAfterTheOther(); }

/// The same with a package over HTTP and with the identifier kept in a file.
class WholeLifeOnFallbacks : public WholeLife {
 protected:
  WholeLifeOnFallbacks() {
    auto provider = std::make_shared<PlaceholderDeviceIdProvider>("");
    provider->set_force_sources_unavailable(true);
    services_->device_id_provider = provider;
    service_ = std::make_unique<ScriptedServer>(
        Script::Response(200, R"({"code":400,"allowed":true,"version":"2.0","download_url":")" +
                                  server_.address() + R"(/package.bin"})"));
    config_.server_base_url = service_->address();
  }
  void BeforeEachLife() override {
    WholeLife::BeforeEachLife();
    std::filesystem::remove_all(folder_.path() / "ids");
  }

  std::unique_ptr<ScriptedServer> service_;
};

TEST_P(WholeLifeOnFallbacks, EveryCallThatFailsIsADocumentedFailure) { FailOneAfterTheOther(); }

std::string SpanName(const testing::TestParamInfo<FailingCall::Span>& span) {
  return span.param == FailingCall::Span::kOnce ? "Once" : "ForEver";
}
const auto kSpans = testing::Values(FailingCall::Span::kOnce, FailingCall::Span::kForEver);
INSTANTIATE_TEST_SUITE_P(Faults, WholeLife, kSpans, SpanName);
INSTANTIATE_TEST_SUITE_P(Faults, WholeLifeOnFallbacks, kSpans, SpanName);

}  // namespace
}  // namespace korvixsdk
