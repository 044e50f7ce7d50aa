#include <algorithm>
#include <optional>
#include <string>

#include "doctor/json_object.h"
#include "doctor/loose_lookup.h"
#include "doctor/verdicts.h"
#include "network/json_member_lookup.h"
#include "network/service_code.h"
#include "network/update_check_endpoint.h"

namespace doctor {
namespace {

using korvixsdk::kServiceAccepted;

constexpr std::size_t kDigestLength = 64;

enum class Kind { kText, kFlag, kCode };

struct ReadMember {
  const char* name;
  Kind kind;
  /// A value that is misread breaks the update, not only what a person reads.
  bool matters;
};

/// All that the library looks for.
constexpr ReadMember kReadMembers[] = {
    {"code", Kind::kCode, true},
    {"version", Kind::kText, true},
    {"min_supported_version", Kind::kText, true},
    {"publish_time", Kind::kText, false},
    {"update_content", Kind::kText, false},
    {"download_url", Kind::kText, true},
    {"sha256", Kind::kText, true},
    {"force_update", Kind::kFlag, true},
    {"msg", Kind::kText, false},
};

std::string Quoted(const std::string& text) {
  constexpr std::size_t kLongest = 60;
  return '"' + (text.size() <= kLongest ? text : text.substr(0, kLongest) + "...") + '"';
}

/// What a reader of JSON would take for the value, written as the library would hand it on.
std::string StrictText(const std::string& raw) { return TextOf(raw).value_or(raw); }

// --- update.json

Check CheckJson(std::string_view body, const JsonObject& object) {
  Findings findings;
  if (object.undecided) {
    findings.Warn("the reply " + object.problem, "Keep numbers within what a double holds");
  } else if (!object.problem.empty()) {
    findings.Fail(
        "the reply " + object.problem +
            ": hosts take it for \"no update\", or read it as far as it goes",
        "Answer with one JSON object; look for a sign-in page, a proxy or a reply that is "
        "cut");
  } else if (!IsUtf8(body)) {
    findings.Warn("the reply is not UTF-8", "Write UTF-8: hosts see the bytes as they are sent");
  }
  return findings.As("update.json", "one JSON object");
}

// --- update.lookup

constexpr char kMendNames[] =
    "Keep the members that hosts read in the outermost object, once each, before lists, objects "
    "and "
    "texts that hold their names";

/// Where else in the object the place is.
std::string PlaceOf(const JsonObject& object, std::size_t at) {
  for (const JsonMember& member : object.members) {
    if (at > member.key_at && at < member.end) return "inside the value of " + Quoted(member.key);
  }
  return "elsewhere";
}

void CheckRepetition(const JsonObject& object, const std::string& name, Findings& findings) {
  const JsonMember* const first = object.Find(name);
  const auto other =
      std::find_if(object.members.begin(), object.members.end(), [&](const JsonMember& member) {
        return member.key == name && StrictText(member.raw) != StrictText(first->raw);
      });
  if (other != object.members.end()) {
    findings.Fail(Quoted(name) + " is given twice, and the first counts", kMendNames);
  } else if (object.Count(name) > 1) {
    findings.Warn(Quoted(name) + " is given twice", kMendNames);
  }
}

void CheckName(std::string_view reply, const JsonObject& object, const std::string& name,
               Findings& findings) {
  const JsonMember* const meant = object.Find(name);
  const std::optional<LooseValue> found = LookUpLoosely(reply, name);
  if (meant != nullptr) CheckRepetition(object, name, findings);
  if (!found) {
    if (meant != nullptr) {
      findings.Fail(Quoted(name) + " has escapes in its name and is not found",
                    "Write member names without escapes");
    }
    return;
  }
  if (meant != nullptr && found->key_at == meant->key_at) return;
  const std::string place = Quoted(name) + " is found " + PlaceOf(object, found->key_at);
  if (meant == nullptr && found->names_a_member) {
    findings.Warn(place + ": depth does not matter", kMendNames);
  } else if (meant == nullptr) {
    findings.Fail(place + ", where it is a text, and read as " + Quoted(found->text), kMendNames);
  } else if (found->text != StrictText(meant->raw)) {
    findings.Fail(place + " and read as " + Quoted(found->text) + " instead of " +
                      Quoted(StrictText(meant->raw)),
                  kMendNames);
  } else {
    findings.Warn(place + ", with the same value by chance", kMendNames);
  }
}

Check CheckLookup(std::string_view reply, const JsonObject& object) {
  Findings findings;
  for (const ReadMember& member : kReadMembers) CheckName(reply, object, member.name, findings);
  return findings.As("update.lookup", "every name is found where it is meant");
}

// --- update.types

void CheckTextType(const ReadMember& member, const std::string& raw, Findings& findings) {
  const std::string name = Quoted(member.name);
  const bool used_as_it_is =
      std::string_view(member.name) == "sha256" || std::string_view(member.name) == "download_url";
  if (raw.front() == '"') return;
  if (raw == "null") {
    const std::string reason = name + " is null, which is read as the text \"null\"";
    const char* const remedy = "Leave a member out instead of sending null";
    findings.Add(used_as_it_is ? Status::kFail : Status::kWarn, reason, remedy);
  } else if (raw.front() == '-' || (raw.front() >= '0' && raw.front() <= '9')) {
    findings.Warn(name + " is the number " + raw + ", where a text is expected",
                  "Put the value into quotation marks: a number may lose a final zero");
  } else {
    findings.Fail(name + " is not a text", "Put the value into quotation marks");
  }
}

void CheckFlagType(const std::string& raw, Findings& findings) {
  const std::string text = StrictText(raw);
  if (text == "true" || text == "false" || text == "1" || text == "0") return;
  findings.Warn("\"force_update\" is " + Quoted(text) + ", which counts as no",
                "Send true or false");
}

void CheckCodeType(const std::string& raw, Findings& findings) {
  const std::string text = StrictText(raw);
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    if (raw.front() == '"') findings.Warn("\"code\" is a text", "Send \"code\" as an integer");
    if (korvixsdk::IntFromToken(text)) return;
  }
  findings.Fail("\"code\" is " + Quoted(text) + ", which counts as 400",
                "Send \"code\" as an integer of digits only");
}

Check CheckTypes(const JsonObject& object) {
  Findings findings;
  for (const ReadMember& member : kReadMembers) {
    const JsonMember* const found = object.Find(member.name);
    if (found == nullptr) continue;
    if (member.kind == Kind::kText) CheckTextType(member, found->raw, findings);
    if (member.kind == Kind::kFlag) CheckFlagType(found->raw, findings);
    if (member.kind == Kind::kCode) CheckCodeType(found->raw, findings);
  }
  return findings.As("update.types", "every value has the form that hosts expect");
}

// --- update.escapes

bool HasCodePointEscape(const std::string& raw) {
  for (std::size_t at = raw.find('\\'); at < raw.size(); at = raw.find('\\', at + 2)) {
    if (raw.compare(at, 2, "\\u") == 0) return true;
  }
  return false;
}

Check CheckEscapes(const JsonObject& object) {
  Findings findings;
  for (const ReadMember& member : kReadMembers) {
    const JsonMember* const found = object.Find(member.name);
    if (found == nullptr || found->raw.front() != '"' || !HasCodePointEscape(found->raw)) continue;
    const std::string reason = Quoted(member.name) + " holds a \\u escape, which is not decoded";
    const char* const remedy =
        "Write the characters themselves, in UTF-8; tell the JSON writer not to escape &, < and >";
    findings.Add(member.matters ? Status::kFail : Status::kWarn, reason, remedy);
  }
  return findings.As("update.escapes", "none that hosts would misread");
}

// --- update.answer and update.digest

/// Numbers with single dots between them. How large they may be is the library's to say.
bool LooksLikeVersion(const std::string& text) {
  if (text.empty() || text.front() == '.' || text.back() == '.') return false;
  return text.find("..") == std::string::npos &&
         text.find_first_not_of("0123456789.") == std::string::npos;
}

void CheckVersionText(const char* name, const std::string& version, Findings& findings) {
  if (version.empty() || LooksLikeVersion(version)) return;
  findings.Fail(Quoted(name) + " is " + Quoted(version) + ", which is no version and never newer",
                "Write versions as numbers with dots between them, such as 2.10.3");
}

Check CheckAnswer(std::string_view reply, const korvixsdk::UpdateInfo& offer) {
  Findings findings;
  const std::int32_t code = korvixsdk::FindJsonInt(reply, "code").value_or(kServiceAccepted);
  if (code != kServiceAccepted) {
    findings.Warn(
        "the service rejects the check with code " + std::to_string(code) + ": " + offer.message,
        "Look at the service's rules for this product, version and machine");
  }
  if (code != kServiceAccepted && !offer.latest_version.empty()) {
    findings.Warn("it offers version " + offer.latest_version + " all the same, which hosts take",
                  "Send no version to whom the service rejects");
  }
  CheckVersionText("version", offer.latest_version, findings);
  CheckVersionText("min_supported_version", offer.min_supported_version, findings);
  if (!offer.latest_version.empty() && offer.download_url.empty()) {
    findings.Fail("a version without \"download_url\"",
                  "Send the package's address with the version");
  }
  return findings.As("update.answer", offer.latest_version.empty()
                                          ? "nothing is offered"
                                          : "version " + offer.latest_version + " is offered");
}

bool IsHex(const std::string& text, const char* letters) {
  return text.size() == kDigestLength && text.find_first_not_of(letters) == std::string::npos;
}

Check CheckDigest(const korvixsdk::UpdateInfo& offer) {
  const char* const id = "update.digest";
  const char* const remedy = "Send the package's SHA-256 as 64 lowercase hexadecimal digits";
  if (offer.latest_version.empty() && offer.download_url.empty()) {
    return NotTried(id, "no package is offered");
  }
  if (offer.sha256.empty()) {
    return Warn(id, "no digest: whatever arrives counts as verified", remedy);
  }
  if (IsHex(offer.sha256, "0123456789abcdef")) return Pass(id, "64 lowercase digits");
  if (IsHex(offer.sha256, "0123456789abcdefABCDEF")) {
    return Fail(id, "the digest is in capitals, which never match", remedy);
  }
  return Fail(id, Quoted(offer.sha256) + " is no SHA-256 and never matches", remedy);
}

}  // namespace

std::vector<Check> CheckUpdateReply(std::string_view body, const ReplyContext& context) {
  const std::string reply = Readable(body);
  const JsonObject object = ReadJsonObject(reply);
  const korvixsdk::UpdateInfo offer = korvixsdk::ReadUpdateReply(std::string(body));
  std::vector<Check> checks = {CheckJson(body, object)};
  if (object.problem.empty()) {
    checks.push_back(CheckLookup(reply, object));
    checks.push_back(CheckTypes(object));
    checks.push_back(CheckEscapes(object));
  } else {
    for (const char* const id : {"update.lookup", "update.types", "update.escapes"}) {
      checks.push_back(NotTried(id, "the reply cannot be read as JSON"));
    }
  }
  checks.push_back(CheckAnswer(body, offer));
  checks.push_back(CheckDigest(offer));
  checks.push_back(CheckDecision(offer, context));
  return checks;
}

}  // namespace doctor
