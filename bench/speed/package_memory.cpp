// package_memory SERVER FOLDER: the most memory that a host has while it prepares a package, beyond
// that of a host that does nothing after Init. Prints lines "WHAT/ours/BYTES MEMORY".
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "chunked_server.h"
#include "exchange.h"
#include "require.h"

namespace {

using speed::Require;

constexpr std::size_t kMiB = 1 << 20;

/// A child's part: the host's life up to Init, or up to a prepared package.
int BeHost(const std::string& folder, const std::string& url) {
  speed::Host host("http://127.0.0.1", folder);
  if (url.empty()) return 0;
  korvixsdk::UpdateInfo info;
  info.download_url = url;
  const auto prepared = host.sdk().PrepareUpdate(info);
  Require(prepared.ok() && prepared.value.ready, "PrepareUpdate: " + prepared.error.message);
  return 0;
}

/// The most memory, in bytes, that a child of this program had.
double PeakOfChild(const std::string& folder, const std::string& url) {
  const pid_t child = fork();
  Require(child >= 0, "fork");
  if (child == 0) {
    execl("/proc/self/exe", "package_memory", "--host", folder.c_str(), url.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  Require(wait4(child, &status, 0, &usage) == child && status == 0, "a child that prepares " + url);
  return static_cast<double>(usage.ru_maxrss) * 1024;
}

/// A child starts with its parent's peak, which would hide a smaller one of its own.
double CurrentPeak() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024;
}

void Measure(const char* what, const std::string& server, const std::string& folder,
             const std::vector<std::size_t>& sizes) {
  for (const std::size_t size : sizes) {
    const double base = PeakOfChild(folder, "");
    Require(base > CurrentPeak(), "the base is this program's own memory");
    const double peak = PeakOfChild(folder, server + "/" + std::to_string(size) + ".pkg");
    Require(peak - base >= static_cast<double>(size), "less memory than the package needs");
    std::printf("%s/ours/%zu %.0f\n", what, size, peak - base);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--host") return BeHost(argv[2], argv[3]);
  Require(argc == 3, "usage: package_memory SERVER FOLDER");
  Measure("memory_announced", std::string(argv[1]) + "/packages", argv[2], {64 * kMiB, 512 * kMiB});
  const speed::ChunkedServer server;
  // Just beyond a power of two a text that doubles has most to spare.
  Measure("memory_chunked", server.address(), argv[2], {64 * kMiB, 65 * kMiB, 260 * kMiB});
  return 0;
}
