// package_bench SERVER FOLDER: times packages that the server has as /packages/BYTES.pkg, from the
// address to the verified file, and prints lines "WHAT/WHO/BYTES SECONDS". Runs of library and hand
// take turns.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <string>

#include "exchange.h"
#include "package.h"
#include "require.h"

namespace {

using speed::Require;

constexpr std::size_t kMiB = 1 << 20;

template <typename Work>
double SecondsOf(Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Print(const char* what, const char* who, std::size_t size, double seconds) {
  std::printf("%s/%s/%zu %.9f\n", what, who, size, seconds);
  std::fflush(stdout);
}

class Packages {
 public:
  Packages(const std::string& server, const std::string& folder)
      : server_(server), folder_(folder), host_(server, folder) {}

  double ByHand(std::size_t size) {
    std::string digest;
    const std::string path = folder_ + "/by-hand.pkg";
    const double seconds = SecondsOf([&] { digest = speed::PrepareByHand(Url(size), size, path); });
    const auto known = digests_.emplace(size, digest).first;
    Require(known->second == digest, "two digests by hand");
    return seconds;
  }

  /// After `ByHand`, whose digest the library is to find.
  double Ours(std::size_t size) {
    korvixsdk::UpdateInfo info;
    info.download_url = Url(size);
    info.sha256 = digests_.at(size);
    korvixsdk::Result<korvixsdk::PreparedUpdate> prepared;
    const double seconds = SecondsOf([&] { prepared = host_.sdk().PrepareUpdate(info); });
    Require(prepared.ok() && prepared.value.ready, "PrepareUpdate: " + prepared.error.message);
    return seconds;
  }

 private:
  std::string Url(std::size_t size) const {
    return server_ + "/packages/" + std::to_string(size) + ".pkg";
  }

  std::string server_;
  std::string folder_;
  speed::Host host_;
  std::map<std::size_t, std::string> digests_;
};

void Compare(Packages& packages, std::size_t size, int pairs) {
  packages.ByHand(size);
  packages.Ours(size);
  for (int pair = 0; pair < pairs; ++pair) {
    // Whoever comes second may find things warmer: each does half of the time.
    if (pair % 2 == 0) Print("package", "ours", size, packages.Ours(size));
    Print("package", "by_hand", size, packages.ByHand(size));
    if (pair % 2 != 0) Print("package", "ours", size, packages.Ours(size));
  }
}

void Grow(Packages& packages) {
  constexpr std::size_t kLargest = 16 * kMiB;
  for (int round = 0; round < 15; ++round) {
    for (std::size_t size = 1 << 10; size <= kLargest; size *= 4) {
      if (round == 0) packages.ByHand(size);
      // Short ones more often: the shortest of the times is what counts.
      const std::size_t times = std::clamp(kMiB / size, std::size_t{1}, std::size_t{16});
      for (std::size_t time = 0; time < times; ++time) {
        Print("growth_package", "ours", size, packages.Ours(size));
      }
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  Require(argc == 3, "usage: package_bench SERVER FOLDER");
  Packages packages(argv[1], argv[2]);
  Compare(packages, 64 * kMiB, 30);
  Compare(packages, 512 * kMiB, 10);
  Grow(packages);
  return 0;
}
