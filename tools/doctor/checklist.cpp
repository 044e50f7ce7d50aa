#include "doctor/checklist.h"

#include <algorithm>
#include <utility>

namespace doctor {
namespace {

struct Title {
  const char* id;
  const char* title;
};

constexpr Title kTitles[] = {
    {"library.version", "Version of the library"},
    {"libcurl.version", "Version of libcurl"},
    {"host.version", "Version of the host"},
    {"cache.folder", "Cache folder"},
    {"cache.writable", "Writing to the cache folder"},
    {"cache.space", "Free space for packages"},
    {"library.init", "Start of the library"},
    {"device-id.sources", "Properties of the machine"},
    {"device-id.value", "Identifier of the machine"},
    {"device-id.stable", "The same identifier twice"},
    {"address.form", "Form of the address"},
    {"address.proxy", "Proxy on the way"},
    {"address.name", "Name of the service resolved"},
    {"address.connection", "Connection to the service"},
    {"address.tls", "TLS and certificate"},
    {"install.request", "Reply to the install report"},
    {"install.json", "Install reply is JSON"},
    {"install.members", "Members of the install reply"},
    {"install.agreement", "Install reply agrees with itself"},
    {"install.answer", "Answer to the install report"},
    {"install.library", "The library's own install report"},
    {"update.request", "Reply to the update check"},
    {"update.json", "Update reply is JSON"},
    {"update.lookup", "Names in the update reply"},
    {"update.types", "Values in the update reply"},
    {"update.escapes", "Escapes in the update reply"},
    {"update.answer", "Answer to the update check"},
    {"update.digest", "Digest in the offer"},
    {"update.decision", "What becomes of this host"},
    {"update.library", "The library's own update check"},
    {"package.address", "Address of the package"},
    {"package.name", "Name of the package file"},
    {"package.request", "Download of the package"},
    {"package.length", "Length of the package"},
    {"package.digest", "Digest of the package"},
    {"package.library", "The library's own download"},
};

void AppendOnce(std::string& text, const std::string& part) {
  if (part.empty() || text.find(part) != std::string::npos) return;
  if (!text.empty()) text += "; ";
  text += part;
}

Check Line(const char* id, Status status, std::string reason, std::string remedy) {
  return {id, status, std::move(reason), std::move(remedy), std::nullopt};
}

}  // namespace

const char* StatusText(Status status) {
  switch (status) {
    case Status::kPass:
      return "pass";
    case Status::kWarn:
      return "warn";
    case Status::kFail:
      return "fail";
    case Status::kNotTried:
      break;
  }
  return "not tried";
}

std::vector<std::string> AllCheckIds() {
  std::vector<std::string> ids;
  for (const Title& title : kTitles) ids.push_back(title.id);
  return ids;
}

std::string TitleOf(const std::string& id) {
  for (const Title& title : kTitles) {
    if (id == title.id) return title.title;
  }
  return {};
}

Check Pass(const char* id, std::string reason) {
  return Line(id, Status::kPass, std::move(reason), {});
}

Check Warn(const char* id, std::string reason, std::string remedy) {
  return Line(id, Status::kWarn, std::move(reason), std::move(remedy));
}

Check Fail(const char* id, std::string reason, std::string remedy) {
  return Line(id, Status::kFail, std::move(reason), std::move(remedy));
}

Check NotTried(const char* id, std::string reason) {
  return Line(id, Status::kNotTried, std::move(reason), {});
}

void Findings::Add(Status status, const std::string& reason, const std::string& remedy) {
  check_.status = std::max(check_.status, status);
  AppendOnce(check_.reason, reason);
  AppendOnce(check_.remedy, remedy);
}

Check Findings::As(const char* id, std::string all_is_well) const {
  Check check = check_;
  check.id = id;
  if (check.status == Status::kPass) check.reason = std::move(all_is_well);
  return check;
}

Status WorstOf(const std::vector<Check>& checks) {
  Status worst = Status::kPass;
  for (const Check& check : checks) {
    if (check.status != Status::kNotTried) worst = std::max(worst, check.status);
  }
  return worst;
}

void Checklist::Add(const std::vector<Check>& checks) {
  for (const Check& check : checks) Add(check);
}

void Checklist::AddNotTried(std::initializer_list<const char*> ids, const std::string& reason) {
  for (const char* const id : ids) Add(NotTried(id, reason));
}

bool Checklist::Failed(std::initializer_list<const char*> ids) const {
  return std::any_of(checks_.begin(), checks_.end(), [ids](const Check& check) {
    return check.status == Status::kFail &&
           std::find(ids.begin(), ids.end(), check.id) != ids.end();
  });
}

}  // namespace doctor
