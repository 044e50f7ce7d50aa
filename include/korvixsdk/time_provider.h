#ifndef KORVIXSDK_TIME_PROVIDER_H_
#define KORVIXSDK_TIME_PROVIDER_H_

/// \file
/// \brief `ITimeProvider`: the wall clock.

#include <cstdint>

namespace korvixsdk {

/// Tells the time. The library never calls it, but it must be there: without it `Init` fails. (If
/// the service sends no time, `ServerResult::server_time` is that of the system clock.) The default
/// implementation reads the system clock at every call, has no state and may be called from any
/// thread.
class ITimeProvider {
 public:
  virtual ~ITimeProvider() = default;

  /// Returns the whole seconds since 1970-01-01 00:00:00 UTC. They may go back when somebody sets
  /// the system clock.
  virtual std::int64_t NowUnixSeconds() = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_TIME_PROVIDER_H_
