#include "platform/placeholder_device_id_provider.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

#include "platform/ascii.h"
#include "platform/fail.h"
#include "platform/fallback_id_file.h"
#include "platform/machine_identity.h"

namespace korvixsdk {
namespace {

/// Part of what is hashed, so that one property alone never looks like the other.
constexpr char kMachineGuidLabel[] = "machine_guid:";
constexpr char kComputerNameLabel[] = "computer_name:";
constexpr std::string_view kSourceSeparator = "|";
constexpr std::uint64_t kFnvOffset = 0xcbf29ce484222325u;
constexpr char kFingerprintPrefix[] = "win-";

/// A property that cannot be read, or is blank, is left out. Case and white space do not count:
/// they differ with who asks and how, on one machine.
void AppendSource(std::string_view label, Result<std::string> property,
                  std::vector<std::string>& sources) {
  if (!property.ok()) return;
  const std::string folded = FoldAsciiToLower(std::move(property.value));
  const std::string_view value = TrimAscii(folded);
  if (value.empty()) return;
  std::string& source = sources.emplace_back();
  source.reserve(label.size() + value.size());
  source.append(label).append(value);
}

/// A short name for what stands in the machine's own settings; nothing is hidden by it, and it
/// cannot be changed any more without making a new machine of every one.
std::uint64_t ContinueFnv1a64(std::uint64_t hash, std::string_view text) {
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3u;
  }
  return hash;
}

/// Of the sources with one separator between them, which are not put together for it; nothing where
/// none holds any text.
std::optional<std::uint64_t> HashOf(const std::vector<std::string>& sources) {
  std::optional<std::uint64_t> hash;
  for (const std::string& source : sources) {
    if (hash) hash = ContinueFnv1a64(*hash, kSourceSeparator);
    if (hash || !source.empty()) hash = ContinueFnv1a64(hash.value_or(kFnvOffset), source);
  }
  return hash;
}

/// Lowercase hexadecimal without padding: a small hash has fewer than 16 digits.
std::string FingerprintId(std::uint64_t hash) {
  char text[sizeof(kFingerprintPrefix) - 1 + 16];
  char* const digits = std::copy_n(kFingerprintPrefix, sizeof(kFingerprintPrefix) - 1, text);
  return std::string(text, std::to_chars(digits, std::end(text), hash, 16).ptr);
}

}  // namespace

std::uint64_t Fnv1a64(std::string_view text) { return ContinueFnv1a64(kFnvOffset, text); }

PlaceholderDeviceIdProvider::PlaceholderDeviceIdProvider(std::string fallback_id_path)
    : fallbackIdPath(std::move(fallback_id_path)) {}

Result<std::string> PlaceholderDeviceIdProvider::GetDeviceId() {
  const Result<std::vector<std::string>> sources = CollectFingerprintSources();
  if (!sources.ok()) return FallbackId(fallbackIdPath);
  const std::optional<std::uint64_t> hash = HashOf(sources.value);
  if (!hash) return FallbackId(fallbackIdPath);
  return {FingerprintId(*hash), Error{}};
}

Result<std::vector<std::string>> PlaceholderDeviceIdProvider::CollectFingerprintSources() {
  Result<std::vector<std::string>> sources;
  if (forceSourcesUnavailable) {
    return Fail(kPlatformError, "Device fingerprint sources are forced unavailable");
  }
  sources.value.reserve(2);
  AppendSource(kMachineGuidLabel, ReadMachineGuid(), sources.value);
  AppendSource(kComputerNameLabel, ReadComputerName(), sources.value);
  if (sources.value.empty()) {
    return Fail(kPlatformError, "Unable to collect any stable device fingerprint sources");
  }
  return sources;
}

}  // namespace korvixsdk
