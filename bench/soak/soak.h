#ifndef KORVIXSDK_BENCH_SOAK_SOAK_H_
#define KORVIXSDK_BENCH_SOAK_SOAK_H_

#include <korvixsdk/korvixsdk.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "options.h"
#include "process_usage.h"

namespace soak {

/// What one thread, or all of them, did so far.
struct Counts {
  std::int64_t checks = 0;
  std::int64_t reports = 0;
  std::int64_t downloads = 0;
  std::int64_t failures = 0;

  Counts& operator+=(const Counts& other);
};

/// What was done and used by the end of one stage.
struct Sample {
  Counts counts{};
  ProcessUsage usage{};
  double seconds = 0;
};

/// One thread's host: a facade with its own registry and its own cache folder.
class Worker {
 public:
  /// `checks` and `downloads` are this worker's share of the whole run.
  Worker(std::int64_t checks, std::int64_t downloads) : checks_(checks), downloads_(downloads) {}

  korvixsdk::Error Init(const Options& options, std::int64_t number);

  /// Goes on until this share of all checks, from 0 to 1, is done, with the downloads that belong
  /// to them.
  void RunTo(double share);

  const Counts& counts() const { return counts_; }
  /// What the first operation that failed said.
  const std::string& first_failure() const { return first_failure_; }

 private:
  void Check();
  void Report();
  void Download();
  void Fail(const char* operation, const korvixsdk::Error& error);

  std::int64_t checks_;
  std::int64_t downloads_;
  korvixsdk::KorvixSDK sdk_;
  korvixsdk::UpdateInfo offer_;
  Counts counts_;
  std::string first_failure_;
};

/// The whole run in stages; all threads have ended at the end of each, so that a measurement sees
/// what is kept and not what is in use.
class Soak {
 public:
  explicit Soak(const Options& options);

  /// False, with a text, when a facade could not be initialised.
  bool Init(std::string* failure);

  /// Runs to this share of all checks.
  Sample RunTo(double share);

  /// What failed first in each thread in which something failed.
  std::vector<std::string> Failures() const;

 private:
  Options options_;
  std::vector<std::unique_ptr<Worker>> workers_;
};

}  // namespace soak

#endif  // KORVIXSDK_BENCH_SOAK_SOAK_H_
