// exchange_bench SERVER FOLDER: the time of an update check and of an install report, beside the
// same by hand and beside bare libcurl. They take turns, one exchange each; of some hundred turns
// the median of each counts, as every exchange waits for another process.
#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "exchange.h"
#include "require.h"

namespace {

using speed::Require;

constexpr int kRounds = 12;
constexpr int kTurns = 300;

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
  Require(host.CheckByHand() == offer && host.ReportByHand().size() == reply.size(),
          "all of it by hand");
}

struct Contender {
  const char* name;
  std::function<void()> exchange;
  std::vector<double> nanoseconds{};

  void Take() {
    const auto start = std::chrono::steady_clock::now();
    exchange();
    nanoseconds.push_back(
        std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count());
  }
  double TakeMedian() {
    const auto middle = nanoseconds.begin() + static_cast<std::ptrdiff_t>(nanoseconds.size() / 2);
    std::nth_element(nanoseconds.begin(), middle, nanoseconds.end());
    const double median = *middle;
    nanoseconds.clear();
    return median;
  }
};

}  // namespace

int main(int argc, char** argv) {
  Require(argc == 3, "usage: exchange_bench SERVER FOLDER");
  speed::Host host(argv[1], argv[2]);
  RequireSameReplies(host);
  Contender contenders[] = {
      {"exchange/ours/check", [&] { host.Check(); }},
      {"exchange/by_hand/check", [&] { host.CheckByHand(); }},
      {"exchange/libcurl/check", [&] { speed::FetchByHand(host.update_url()); }},
      {"exchange/ours/report", [&] { host.Report(); }},
      {"exchange/by_hand/report", [&] { host.ReportByHand(); }},
      {"exchange/libcurl/report", [&] { speed::FetchByHand(host.install_url()); }}};
  for (int round = 0; round < kRounds; ++round) {
    for (int turn = 0; turn < kTurns; ++turn) {
      for (Contender& contender : contenders) contender.Take();
    }
    for (Contender& contender : contenders) {
      std::cout << contender.name << ' ' << contender.TakeMedian() << '\n';
    }
  }
  return 0;
}
