#include "soak.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace soak {
namespace {

/// The part of `total` that falls to one of `parts`; the first ones take what is left over.
std::int64_t ShareOf(std::int64_t total, std::int64_t parts, std::int64_t number) {
  return total / parts + (number < total % parts ? 1 : 0);
}

}  // namespace

Counts& Counts::operator+=(const Counts& other) {
  checks += other.checks;
  reports += other.reports;
  downloads += other.downloads;
  failures += other.failures;
  return *this;
}

korvixsdk::Error Worker::Init(const Options& options, std::int64_t number) {
  const std::string name = std::to_string(number);
  korvixsdk::SDKConfig config;
  config.product_id = "editor";
  config.version = "1.4.0";
  config.cache_dir = options.folder + "/cache-" + name;
  config.server_base_url = options.server;
  // One for the process, whichever thread came last.
  config.fallback_device_id_path = options.folder + "/device-id";
  config.services = std::make_shared<korvixsdk::ServiceRegistry>();
  return sdk_.Init(config);
}

void Worker::RunTo(double share) {
  const auto target = std::llround(share * static_cast<double>(checks_));
  while (counts_.checks < target) {
    Check();
    Report();
    while (counts_.downloads * checks_ < counts_.checks * downloads_) Download();
  }
}

void Worker::Check() {
  ++counts_.checks;
  const korvixsdk::Result<korvixsdk::UpdateInfo> check = sdk_.CheckForUpdate();
  if (!check.ok()) return Fail("CheckForUpdate", check.error);
  if (!check.value.has_update || !check.value.message.empty()) {
    return Fail("CheckForUpdate", {korvixsdk::kInvalidResponse, "offers nothing"});
  }
  offer_ = check.value;
}

void Worker::Report() {
  ++counts_.reports;
  const korvixsdk::Result<korvixsdk::ServerResult> report = sdk_.ReportInstall();
  if (!report.ok()) return Fail("ReportInstall", report.error);
  if (!report.value.success) Fail("ReportInstall", {korvixsdk::kInvalidResponse, "rejected"});
}

void Worker::Download() {
  ++counts_.downloads;
  const korvixsdk::Result<korvixsdk::PreparedUpdate> prepared = sdk_.PrepareUpdate(offer_);
  if (!prepared.ok()) Fail("PrepareUpdate", prepared.error);
}

void Worker::Fail(const char* operation, const korvixsdk::Error& error) {
  if (counts_.failures++ > 0) return;
  first_failure_ = std::string(operation) + ": " + error.message + " (code " +
                   std::to_string(error.code) + ", check " + std::to_string(counts_.checks) + ")";
}

Soak::Soak(const Options& options) : options_(options) {
  for (std::int64_t number = 0; number < options.threads; ++number) {
    workers_.push_back(
        std::make_unique<Worker>(ShareOf(options.checks, options.threads, number),
                                 ShareOf(options.downloads, options.threads, number)));
  }
}

bool Soak::Init(std::string* failure) {
  std::int64_t number = 0;
  for (const std::unique_ptr<Worker>& worker : workers_) {
    const korvixsdk::Error error = worker->Init(options_, ++number);
    if (!error.ok()) {
      *failure = "Init: " + error.message;
      return false;
    }
  }
  return true;
}

Sample Soak::RunTo(double share) {
  const auto start = std::chrono::steady_clock::now();
  std::vector<std::thread> threads;
  for (const std::unique_ptr<Worker>& worker : workers_) {
    threads.emplace_back(&Worker::RunTo, worker.get(), share);
  }
  for (std::thread& thread : threads) thread.join();
  Sample sample;
  sample.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  for (const std::unique_ptr<Worker>& worker : workers_) sample.counts += worker->counts();
  sample.usage = MeasureProcess();
  return sample;
}

std::vector<std::string> Soak::Failures() const {
  std::vector<std::string> failures;
  for (const std::unique_ptr<Worker>& worker : workers_) {
    if (!worker->first_failure().empty()) failures.push_back(worker->first_failure());
  }
  return failures;
}

}  // namespace soak
