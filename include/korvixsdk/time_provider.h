#ifndef KORVIXSDK_TIME_PROVIDER_H_
#define KORVIXSDK_TIME_PROVIDER_H_

/// \file
/// \brief `ITimeProvider`: the wall clock.

#include <cstdint>

namespace korvixsdk {

/// Tells the time of day. The library asks it nothing: `Init` fails where there is none, and that
/// is all. (Where the service sends no time, `ServerResult::server_time` is the system's.) The
/// default implementation reads the system clock at every call, has no state and may be called from
/// any thread.
class ITimeProvider {
 public:
  virtual ~ITimeProvider() = default;

  /// Whole seconds since 1970-01-01 00:00:00 UTC, fractions cut off. Not monotonic: it follows
  /// every adjustment of the system clock.
  virtual std::int64_t NowUnixSeconds() = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_TIME_PROVIDER_H_
