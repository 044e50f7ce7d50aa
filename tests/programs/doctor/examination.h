#ifndef KORVIXSDK_TESTS_PROGRAMS_DOCTOR_EXAMINATION_H_
#define KORVIXSDK_TESTS_PROGRAMS_DOCTOR_EXAMINATION_H_

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {

/// What `korvix-doctor --json` printed.
struct Examination {
  int exit_status = 0;
  nlohmann::json report{};
  /// Its checks.
  nlohmann::json lines{};

  /// The line of this identifier; a failure of the test when there is none.
  nlohmann::json Line(const std::string& id) const;
  std::string Status(const std::string& id) const { return Line(id).at("status"); }
  std::string Reason(const std::string& id) const { return Line(id).at("reason"); }
};

/// Reads the command line and runs the doctor as the program does.
Examination Examine(const TempFolder& folder, const std::string& address,
                    const std::vector<std::string>& options = {});

/// A healthy service, whose parts a test may break.
struct Service {
  explicit Service(const std::string& address);

  /// In the order in which the doctor connects: once to try, then twice each, by itself and by the
  /// library.
  std::vector<Script> scripts() const;

  Script install;
  Script update;
  Script package;
};

/// The update reply of a healthy service, for a package at this address.
std::string UpdateReply(const std::string& download_url, const std::string& version = "2.0.0");

inline const std::string kPackage = "mock update package payload";

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROGRAMS_DOCTOR_EXAMINATION_H_
