#ifndef KORVIXSDK_PLATFORM_MOCK_ADDRESSES_H_
#define KORVIXSDK_PLATFORM_MOCK_ADDRESSES_H_

#include <cstdint>
#include <string_view>

#include "platform/ascii.h"

namespace korvixsdk {

/// What begins with "mock://" is answered by the library itself, without network, file or process:
/// the service's base address, a package's address, and the updater's path. All the rules stand
/// here, as they are one promise to hosts that test themselves with them. Case matters throughout.

/// Whether the built-in mock server answers for this base address, or a built-in payload for this
/// package address.
inline bool IsMockUrl(std::string_view url) { return StartsWith(url, "mock://"); }

/// What the service behind a base address does.
enum class MockMode : std::int32_t { kNormal = 0, kReject = 1, kOffline = 2, kInvalid = 3 };

/// The first of the words "offline", "reject" and "invalid" that stands anywhere in the address.
inline MockMode ClassifyMockUrl(std::string_view server_base_url) {
  const auto says = [&](std::string_view word) {
    return server_base_url.find(word) != std::string_view::npos;
  };
  if (says("offline")) return MockMode::kOffline;
  if (says("reject")) return MockMode::kReject;
  if (says("invalid")) return MockMode::kInvalid;
  return MockMode::kNormal;
}

/// A package that cannot be had, by the beginning of its address.
inline bool IsMockOfflinePackage(std::string_view url) { return StartsWith(url, "mock://offline"); }

/// What any other mock address of a package holds, and the digest that the mock server offers for
/// it. Only "mock://package-alt", to the letter, holds something else, which does not match.
inline constexpr char kMockPackageSha256[] =
    "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16";
inline const char* MockPackage(std::string_view url) {
  return url == "mock://package-alt" ? "alternate mock update payload"
                                     : "mock update package payload";
}

/// Updaters that start without being there, and that never start, by the beginnings of their paths.
inline bool IsMockLaunchOk(std::string_view path) { return StartsWith(path, "mock://launch-ok"); }
inline bool IsMockLaunchFail(std::string_view path) {
  return StartsWith(path, "mock://launch-fail");
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_MOCK_ADDRESSES_H_
