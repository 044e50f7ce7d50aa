#ifndef KORVIXSDK_TESTS_PROCESSES_PARTNER_HOST_H_
#define KORVIXSDK_TESTS_PROCESSES_PARTNER_HOST_H_

#include <gtest/gtest.h>

#include <string>

#include "support/child_process.h"

namespace korvixsdk::test {

/// The partner program as a host in a process of its own.
class PartnerHost {
 public:
  PartnerHost(const std::string& cache_dir, const std::string& id_path, const std::string& url)
      : process_({KORVIXSDK_FILES_PARTNER, "host", cache_dir, id_path, url}) {
    EXPECT_EQ(process_.ReadLine(), "ready");
  }

  /// Begins an identification and a preparation.
  void Begin() { process_.WriteLine("go"); }

  /// Waits for their end; the identifier, or what went wrong.
  std::string End() {
    const std::string line = process_.ReadLine();
    const std::string success = "0 0 ";
    return line.rfind(success, 0) == 0 ? line.substr(success.size()) : "failed: " + line;
  }

  void Kill() { process_.Kill(); }

  /// After a kill: whether the work had come to its end before.
  bool HadEnded() { return !process_.ReadLine().empty(); }

 private:
  ChildProcess process_;
};

/// A service with one large package, in a process of its own: the connections of a host that is
/// killed are nobody's concern when it goes.
class PackageService {
 public:
  explicit PackageService(std::size_t package_size)
      : process_({KORVIXSDK_FILES_PARTNER, "serve", std::to_string(package_size)}) {
    EXPECT_EQ(process_.ReadLine(), "ready");
    url_ = process_.ReadLine() + "/editor.pkg";
  }

  const std::string& url() const { return url_; }

 private:
  ChildProcess process_;
  std::string url_;
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_PARTNER_HOST_H_
