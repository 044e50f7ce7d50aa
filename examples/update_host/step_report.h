#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_REPORT_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_REPORT_H_

#include <korvixsdk/korvixsdk.h>

#include <nlohmann/json.hpp>
#include <string>

#include "step_records.h"

namespace update_host {

/// Prints one line for each step: text for people, or JSON for programs. A failure's message goes
/// to standard error in both cases.
class StepReport {
 public:
  explicit StepReport(bool json) : json_(json) {}

  /// A step that answers with a value.
  template <typename T>
  void Print(const std::string& step, const korvixsdk::Result<T>& result) const {
    PrintLine(step, result.error, {{"value", ToJson(result.value)}}, Describe(result.value));
  }

  /// A step that answers with nothing but its outcome; `text` is for people.
  void Print(const std::string& step, const korvixsdk::Error& error,
             const std::string& text) const {
    PrintLine(step, error, nlohmann::ordered_json::object(), text);
  }

 private:
  void PrintLine(const std::string& step, const korvixsdk::Error& error,
                 const nlohmann::ordered_json& more_members, const std::string& text) const;

  bool json_;
};

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_STEP_REPORT_H_
