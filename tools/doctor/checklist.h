#ifndef KORVIXSDK_TOOLS_DOCTOR_CHECKLIST_H_
#define KORVIXSDK_TOOLS_DOCTOR_CHECKLIST_H_

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace doctor {

/// In the order of badness, but for the last.
enum class Status { kPass, kWarn, kFail, kNotTried };

/// "pass", "warn", "fail" or "not tried".
const char* StatusText(Status status);

/// One line of the checklist.
struct Check {
  std::string id{};
  Status status = Status::kPass;
  std::string reason{};
  /// What to do; empty for a pass.
  std::string remedy{};
  /// Only where time was measured.
  std::optional<double> milliseconds{};
};

/// The identifiers of all checks, in the order of the checklist.
std::vector<std::string> AllCheckIds();

/// What a check looks at, in a few words. Empty for an identifier that is none.
std::string TitleOf(const std::string& id);

Check Pass(const char* id, std::string reason);
Check Warn(const char* id, std::string reason, std::string remedy);
Check Fail(const char* id, std::string reason, std::string remedy);
Check NotTried(const char* id, std::string reason);

/// Several findings of one check; the worst decides.
class Findings {
 public:
  void Add(Status status, const std::string& reason, const std::string& remedy);
  void Warn(const std::string& reason, const std::string& remedy) {
    Add(Status::kWarn, reason, remedy);
  }
  void Fail(const std::string& reason, const std::string& remedy) {
    Add(Status::kFail, reason, remedy);
  }
  /// \param all_is_well the reason of a check without findings.
  Check As(const char* id, std::string all_is_well) const;

 private:
  Check check_;
};

/// The worst of them. What was not tried does not count.
Status WorstOf(const std::vector<Check>& checks);

/// The lines so far.
class Checklist {
 public:
  void Add(Check check) { checks_.push_back(std::move(check)); }
  void Add(const std::vector<Check>& checks);
  void AddNotTried(std::initializer_list<const char*> ids, const std::string& reason);

  const std::vector<Check>& checks() const { return checks_; }
  /// Whether one of these lines is a failure.
  bool Failed(std::initializer_list<const char*> ids) const;

 private:
  std::vector<Check> checks_;
};

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_CHECKLIST_H_
