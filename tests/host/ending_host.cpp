// ending_host check SERVER FOLDER MICROSECONDS: one worker makes one update check and one install
//   report; `main` returns after so many microseconds, whatever the worker does.
// ending_host loop SERVER FOLDER MICROSECONDS: six workers check, report and prepare packages for
//   ever; the program exits after so many microseconds.
// Ends with 0 unless something goes wrong at the end.
#include <korvixsdk/korvixsdk.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

#include "support/host_config.h"

namespace {

using korvixsdk::KorvixSDK;
using korvixsdk::UpdateInfo;

constexpr int kWorkers = 6;

struct Arguments {
  std::string server;
  std::string folder;
  std::chrono::microseconds time{0};
};

/// Never freed, as their threads use them up to the end of the process.
KorvixSDK* hosts[kWorkers];

KorvixSDK& NewHost(const Arguments& arguments, int worker) {
  korvixsdk::SDKConfig config =
      korvixsdk::test::LeastConfig(arguments.folder + "/" + std::to_string(worker));
  config.server_base_url = arguments.server;
  hosts[worker] = new KorvixSDK;
  if (!hosts[worker]->Init(config).ok()) std::abort();
  return *hosts[worker];
}

void CheckAndReport(KorvixSDK& sdk) {
  static_cast<void>(sdk.CheckForUpdate());
  static_cast<void>(sdk.ReportInstall());
}

int RunOneWorker(const Arguments& arguments) {
  KorvixSDK& sdk = NewHost(arguments, 0);
  std::thread([&sdk] { CheckAndReport(sdk); }).detach();
  std::this_thread::sleep_for(arguments.time);
  return 0;
}

[[noreturn]] void RunLoopingWorkers(const Arguments& arguments) {
  UpdateInfo offer;
  offer.download_url = arguments.server + "/editor.pkg";
  for (int worker = 0; worker < kWorkers; ++worker) {
    KorvixSDK& sdk = NewHost(arguments, worker);
    std::thread([&sdk, offer] {
      for (;;) {
        CheckAndReport(sdk);
        static_cast<void>(sdk.PrepareUpdate(offer));
      }
    }).detach();
  }
  std::this_thread::sleep_for(arguments.time);
  std::exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (argc == 5) {
    const Arguments arguments{argv[2], argv[3], std::chrono::microseconds(std::stol(argv[4]))};
    if (command == "check") return RunOneWorker(arguments);
    if (command == "loop") RunLoopingWorkers(arguments);
  }
  std::cerr << "ending_host: wrong usage\n";
  return 2;
}
