// files_partner host CACHE-FOLDER ID-FILE PACKAGE-URL: a host that goes through its file work once
//   for each line on standard input and answers a line: the two error codes, the identifier, and
//   what failed.
// files_partner hold FILE: keeps the file open without sharing it (Windows).
// files_partner serve SIZE: a service whose packages are all LargePackage(SIZE); says its address
// in
//   its second line.
// files_partner wait: does nothing.
// Each says "ready" first and ends when standard input does.
#include <iostream>
#include <string>

#include "processes/file_host.h"
#include "processes/large_package.h"
#include "support/scripted_server.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using korvixsdk::PreparedUpdate;
using korvixsdk::Result;

void SayReady() { std::cout << "ready" << std::endl; }

void WaitForEnd() {
  std::string line;
  while (std::getline(std::cin, line)) continue;
}

int RunHost(const std::string& cache_dir, const std::string& id_path, const std::string& url) {
  SayReady();
  for (std::string line; std::getline(std::cin, line);) {
    korvixsdk::test::FileHost host(cache_dir, id_path);
    const Result<std::string> id = host.GetDeviceId();
    const Result<PreparedUpdate> prepared = host.Prepare(url);
    std::cout << id.error.code << ' ' << prepared.error.code << ' ' << id.value
              << host.init().message << id.error.message << prepared.error.message << std::endl;
  }
  return 0;
}

int Hold(const std::string& path) {
#ifdef _WIN32
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 1;
  SayReady();
  WaitForEnd();
  CloseHandle(file);
  return 0;
#else
  std::cerr << "only Windows keeps " << path << " from others\n";
  return 1;
#endif
}

int Serve(const std::string& size) {
  using korvixsdk::test::Script;
  const korvixsdk::test::ScriptedServer server(
      Script::Response(200, korvixsdk::test::LargePackage(std::stoul(size))));
  SayReady();
  std::cout << server.address() << std::endl;
  WaitForEnd();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "host" && argc == 5) return RunHost(argv[2], argv[3], argv[4]);
  if (command == "hold" && argc == 3) return Hold(argv[2]);
  if (command == "serve" && argc == 3) return Serve(argv[2]);
  if (command == "wait" && argc == 2) {
    SayReady();
    WaitForEnd();
    return 0;
  }
  std::cerr << "files_partner: wrong usage\n";
  return 2;
}
