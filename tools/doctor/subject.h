#ifndef KORVIXSDK_TOOLS_DOCTOR_SUBJECT_H_
#define KORVIXSDK_TOOLS_DOCTOR_SUBJECT_H_

#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <string>

#include "doctor/options.h"

namespace doctor {

/// What is examined: a host with these options, and its facade.
struct Subject {
  explicit Subject(const Options& all_options)
      : options(all_options), services(korvixsdk::SdkFactory::CreateDefaultServices()) {}
  ~Subject() {
    // They and the registry would keep each other alive.
    services->client_service.reset();
    services->update_package_service.reset();
  }
  Subject(const Subject&) = delete;
  Subject& operator=(const Subject&) = delete;

  const Options& options;
  std::shared_ptr<korvixsdk::ServiceRegistry> services;
  korvixsdk::KorvixSDK sdk{};
  /// The facade is ready for the library's own calls.
  bool initialised = false;
  /// Empty when there is none.
  std::string device_id{};
};

/// "code 7: HTTP request failed: ..."
inline std::string Describe(const korvixsdk::Error& error) {
  return "code " + std::to_string(error.code) + ": " + error.message;
}

constexpr char kNoFacade[] = "the library could not be started";
constexpr char kMockReason[] = "mock:// is answered inside the library";

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_SUBJECT_H_
