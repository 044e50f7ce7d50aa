// exchange_bench SERVER FOLDER: the time of an update check and of an install report.
#include <benchmark/benchmark.h>

#include "exchange.h"
#include "require.h"

namespace {

using speed::Require;

template <typename Work>
void Register(const char* name, Work work) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    for (auto _ : state) {
      auto answer = work();
      benchmark::DoNotOptimize(answer);
    }
  })->UseRealTime();
}

/// Library and hand must have talked about the same thing.
void RequireSameReplies(speed::Host& host) {
  const std::string offer = speed::FetchByHand(host.update_url());
  const korvixsdk::UpdateInfo info = host.Check();
  Require(offer.find("\"" + info.latest_version + "\"") != std::string::npos &&
              offer.find("\"" + info.download_url + "\"") != std::string::npos,
          "the offer by hand: " + offer);
  const std::string reply = speed::FetchByHand(host.install_url());
  Require(reply.find("\"" + host.Report().message + "\"") != std::string::npos,
          "the reply by hand: " + reply);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  Require(argc == 3, "usage: exchange_bench SERVER FOLDER");
  speed::Host host(argv[1], argv[2]);
  RequireSameReplies(host);
  Register("exchange/ours/check", [&host] { return host.Check(); });
  Register("exchange/libcurl/check", [&host] { return speed::FetchByHand(host.update_url()); });
  Register("exchange/ours/report", [&host] { return host.Report(); });
  Register("exchange/libcurl/report", [&host] { return speed::FetchByHand(host.install_url()); });
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
