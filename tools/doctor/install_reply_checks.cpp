#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "doctor/json_object.h"
#include "doctor/verdicts.h"
#include "network/service_code.h"

namespace doctor {
namespace {

constexpr int kDeepestNesting = 64;
/// Seconds would reach this in the year 5138; milliseconds passed it in 1973.
constexpr std::int64_t kLikelyMilliseconds = 100'000'000'000;

constexpr char kWriteJson[] = "Answer with one JSON object (RFC 8259) and nothing around it";
constexpr char kMendMembers[] =
    "Send \"code\" as an integer and \"allowed\" as true or false, each once; leave out the other "
    "members rather than sending null";

template <typename Integer>
std::optional<Integer> IntegerOf(const std::string& raw) {
  Integer value = 0;
  const char* const end = raw.data() + raw.size();
  const std::from_chars_result read = std::from_chars(raw.data(), end, value);
  if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return value;
}

std::optional<bool> FlagOf(const std::string& raw) {
  if (raw == "true") return true;
  if (raw == "false") return false;
  return std::nullopt;
}

/// The members that are there in the right form; what else there is goes into the findings.
struct InstallReply {
  std::optional<std::int32_t> code{};
  std::optional<bool> allowed{};
  std::optional<bool> success{};
  std::optional<std::string> msg{};
  std::optional<std::int64_t> server_time{};
};

class MemberReader {
 public:
  MemberReader(const JsonObject& object, Findings& findings)
      : object_(object), findings_(findings) {}

  template <typename T>
  std::optional<T> Read(const char* key, const char* form,
                        std::optional<T> (*read)(const std::string&)) {
    const JsonMember* const member = object_.Find(key);
    if (member == nullptr) return std::nullopt;
    const std::string name = '"' + std::string(key) + '"';
    if (object_.Count(key) > 1) findings_.Fail(name + " is given more than once", kMendMembers);
    std::optional<T> value = read(member->raw);
    if (!value)
      findings_.Fail(name + " is " + Shortened(member->raw) + ", not " + form, kMendMembers);
    return value;
  }

  void Require(const char* key) {
    if (object_.Find(key) == nullptr) {
      findings_.Fail('"' + std::string(key) + "\" is missing", kMendMembers);
    }
  }

 private:
  static std::string Shortened(const std::string& raw) {
    constexpr std::size_t kLongest = 40;
    return raw.size() <= kLongest ? raw : raw.substr(0, kLongest) + "...";
  }

  const JsonObject& object_;
  Findings& findings_;
};

InstallReply ReadMembers(const JsonObject& object, Findings& findings) {
  MemberReader reader(object, findings);
  reader.Require("code");
  reader.Require("allowed");
  InstallReply reply;
  reply.code = reader.Read("code", "an integer of 32 bits", &IntegerOf<std::int32_t>);
  reply.allowed = reader.Read("allowed", "true or false", &FlagOf);
  reply.success = reader.Read("success", "true or false", &FlagOf);
  reply.msg = reader.Read("msg", "a text", &TextOf);
  reply.server_time = reader.Read("server_time", "an integer of 64 bits", &IntegerOf<std::int64_t>);
  return reply;
}

Check CheckJson(std::string_view body, const JsonObject& object) {
  Findings findings;
  if (object.undecided) {
    findings.Warn("the reply " + object.problem, "Keep numbers within what a double holds");
  } else if (!object.problem.empty()) {
    findings.Fail("the reply " + object.problem, kWriteJson);
  } else if (object.depth > kDeepestNesting) {
    findings.Fail("the reply nests deeper than 64 levels", "Nest less");
  } else if (!IsUtf8(body)) {
    findings.Warn("the reply is not UTF-8", "Write UTF-8: hosts see the bytes as they are sent");
  }
  return findings.As("install.json", "one JSON object");
}

Check CheckAgreement(const InstallReply& reply) {
  if (!reply.code || !reply.allowed) {
    return NotTried("install.agreement", "\"code\" and \"allowed\" cannot be read");
  }
  const bool accepting =
      *reply.code == korvixsdk::kServiceAccepted || *reply.code == korvixsdk::kServiceAlsoAccepted;
  const std::string code = std::to_string(*reply.code);
  Findings findings;
  if (accepting != *reply.allowed) {
    findings.Fail("\"code\" " + code + (accepting ? " accepts" : " rejects") +
                      ", but \"allowed\" is " + (*reply.allowed ? "true" : "false"),
                  "Send allowed: true with code 400 or 401, and allowed: false with any other");
  }
  if (reply.success && *reply.success != *reply.allowed) {
    findings.Fail("\"success\" and \"allowed\" differ",
                  "Send both alike, or leave out \"success\"");
  }
  return findings.As("install.agreement", "\"code\", \"allowed\" and \"success\" say the same");
}

Check CheckAnswer(const InstallReply& reply) {
  Findings findings;
  const std::string message = reply.msg.value_or("");
  if (!*reply.allowed) {
    findings.Warn("the service rejects this installation with code " + std::to_string(*reply.code) +
                      (message.empty() ? "" : ": " + message),
                  "Look at the service's rules for this product, version and machine");
  }
  if (reply.server_time && *reply.server_time >= kLikelyMilliseconds) {
    findings.Warn("\"server_time\" looks like milliseconds", "Send seconds since 1970");
  }
  return findings.As("install.answer", "accepted" + (message.empty() ? "" : ": " + message));
}

}  // namespace

std::vector<Check> CheckInstallReply(std::string_view body) {
  const JsonObject object = ReadJsonObject(Readable(body));
  std::vector<Check> checks = {CheckJson(body, object)};
  if (!object.problem.empty() || checks.front().status == Status::kFail) {
    for (const char* const id : {"install.members", "install.agreement", "install.answer"}) {
      checks.push_back(NotTried(id, "the reply cannot be read"));
    }
    return checks;
  }
  Findings findings;
  const InstallReply reply = ReadMembers(object, findings);
  checks.push_back(findings.As("install.members", "present and of the right form"));
  checks.push_back(CheckAgreement(reply));
  if (checks[1].status == Status::kPass && checks[2].status == Status::kPass) {
    checks.push_back(CheckAnswer(reply));
  } else {
    checks.push_back(NotTried("install.answer", "the library takes no answer from this reply"));
  }
  return checks;
}

}  // namespace doctor
