#include "doctor/machine_checks.h"

#include <curl/curl.h>
#include <korvixsdk/version.h>

#include <algorithm>
#include <optional>

#include "doctor/folder.h"

namespace doctor {
namespace {

using korvixsdk::Error;
using korvixsdk::Result;

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;
constexpr std::uint64_t kComfortableSpace = 1024 * kMebibyte;
constexpr char kNoFolder[] = "there is no cache folder";

bool Begins(const std::string& text, const char* beginning) {
  return text.rfind(beginning, 0) == 0;
}

Check CheckLibcurl() {
  const curl_version_info_data* const info = curl_version_info(CURLVERSION_NOW);
  const std::string version = std::string("libcurl ") + info->version;
  bool https = false;
  for (const char* const* protocol = info->protocols; *protocol != nullptr; ++protocol) {
    https = https || std::string("https") == *protocol;
  }
  if (!https || info->ssl_version == nullptr) {
    return Fail("libcurl.version", version + " speaks no HTTPS",
                "Use a libcurl that was built with TLS");
  }
  return Pass("libcurl.version", version + ", " + info->ssl_version);
}

Check CheckHostVersion(const Subject& subject) {
  const char* const id = "host.version";
  const std::string& version = subject.options.config.version;
  // Nothing is newer than a text that is no version.
  const std::string newest = "2147483647.2147483647.2147483647.2147483647";
  if (version == newest || subject.services->update_policy->IsNewerVersion(version, newest)) {
    return Pass(id, version);
  }
  return Fail(id, '"' + version + "\" is no version, so that no update is ever newer",
              "Give the host a version of numbers with dots between them, such as 2.10.3");
}

/// Writes, reads and removes a file where packages go.
Check CheckWriting(Subject& subject) {
  const char* const id = "cache.writable";
  const char* const remedy =
      "Choose a folder that this user may write to; look for a full disk and "
      "for security software that guards the folder";
  korvixsdk::IFileSystemProvider& files = *subject.services->file_system;
  const std::string folder = Entry(subject.options.config.cache_dir, "updates");
  const std::string probe = Entry(folder, "doctor-probe.tmp");
  const std::string content = "written by the doctor";
  const Error written = files.WriteFile(probe, content);
  if (!written.ok()) return Fail(id, Describe(written), remedy);
  const Result<std::string> read = files.ReadFile(probe);
  Remove(probe);
  if (!read.ok()) return Fail(id, Describe(read.error), remedy);
  if (read.value != content) return Fail(id, "what was written reads otherwise", remedy);
  if (files.Exists(probe)) {
    return Warn(id, "a file cannot be removed: " + probe, "Remove it, and look who holds it");
  }
  return Pass(id, folder);
}

void CheckCache(Subject& subject, Checklist& checklist) {
  const std::string& folder = subject.options.config.cache_dir;
  const Error created = subject.services->file_system->CreateDirectories(folder);
  if (!created.ok()) {
    checklist.Add(
        Fail("cache.folder", Describe(created),
             "Look for a file in the way, a missing drive or missing rights; name another "
             "folder"));
    checklist.AddNotTried({"cache.writable", "cache.space"}, kNoFolder);
    return;
  }
  checklist.Add(Pass("cache.folder", folder));
  checklist.Add(CheckWriting(subject));
  const std::optional<std::uint64_t> space = FreeSpace(folder);
  checklist.Add(space ? CheckFreeSpace(*space)
                      : NotTried("cache.space", "the system does not tell"));
}

Check CheckInit(Subject& subject) {
  const char* const id = "library.init";
  korvixsdk::SDKConfig config = subject.options.config;
  config.services = subject.services;
  const Error error = subject.sdk.Init(config);
  subject.initialised = error.ok();
  if (!error.ok()) return Fail(id, Describe(error), "Correct what the message names");
  return Pass(id, "the library takes this configuration");
}

Check CheckStability(Subject& subject, const std::string& first) {
  const char* const id = "device-id.stable";
  const Result<std::string> again = subject.services->device_id_provider->GetDeviceId();
  if (again.value == first) return Pass(id, "the same at the second call");
  return Fail(id, "the second call gives another: " + again.value + again.error.message,
              "Look who changes the machine's properties or the fallback file");
}

void CheckIdentity(Subject& subject, Checklist& checklist) {
  korvixsdk::IDeviceIdProvider& provider = *subject.services->device_id_provider;
  const bool has_fallback = !subject.options.config.fallback_device_id_path.empty();
  checklist.Add(CheckSources(provider.CollectFingerprintSources(), has_fallback));
  const Result<std::string> id = provider.GetDeviceId();
  checklist.Add(CheckDeviceId(id));
  if (!id.ok()) {
    checklist.AddNotTried({"device-id.stable"}, "there is no identifier");
    return;
  }
  subject.device_id = id.value;
  checklist.Add(CheckStability(subject, id.value));
}

}  // namespace

Check CheckFreeSpace(std::uint64_t available_bytes) {
  const std::string text = std::to_string(available_bytes / kMebibyte) + " MiB are free";
  if (available_bytes >= kComfortableSpace) return Pass("cache.space", text);
  return Warn("cache.space", text, "Free some space: a package needs its whole size there");
}

Check CheckSources(const Result<std::vector<std::string>>& sources, bool has_fallback) {
  const char* const id = "device-id.sources";
  const auto has = [&sources](const char* label) {
    return std::any_of(sources.value.begin(), sources.value.end(),
                       [label](const std::string& source) { return Begins(source, label); });
  };
  const bool guid = has("machine_guid:");
  const bool name = has("computer_name:");
  if (guid && name) return Pass(id, "machine GUID and computer name");
  if (name) {
    return Warn(
        id, "the computer name alone: machines of one name share an identifier",
        "Let the host read the machine GUID (MachineGuid in the registry; /etc/machine-id), "
        "and run it as a 64-bit process");
  }
  if (guid) {
    return Warn(id, "the machine GUID alone: clones of one disk share an identifier",
                "Give the machine a name");
  }
  const std::string reason = "neither machine GUID nor computer name: " + sources.error.message;
  if (has_fallback) return Warn(id, reason, "None: the fallback file keeps the identifier");
  return Fail(id, reason, "Name a file with --fallback-id, and in the host's configuration");
}

Check CheckDeviceId(const Result<std::string>& id) {
  const char* const check = "device-id.value";
  if (!id.ok()) {
    return Fail(check, Describe(id.error),
                "Name a fallback file in a folder that this user may write to");
  }
  if (Begins(id.value, "win-")) return Pass(check, id.value + ", from the machine's properties");
  if (Begins(id.value, "guid-")) {
    return Warn(check, id.value + ", from the fallback file",
                "Keep that file: without it the machine becomes another one");
  }
  return Warn(check, id.value + ", of a form that the library does not write",
              "Look who wrote the fallback file");
}

void CheckMachine(Subject& subject, Checklist& checklist) {
  checklist.Add(Pass("library.version", "KorvixSDK " KORVIXSDK_VERSION));
  checklist.Add(CheckLibcurl());
  checklist.Add(CheckHostVersion(subject));
  CheckCache(subject, checklist);
  checklist.Add(CheckInit(subject));
  CheckIdentity(subject, checklist);
}

}  // namespace doctor
