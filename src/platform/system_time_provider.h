#ifndef KORVIXSDK_PLATFORM_SYSTEM_TIME_PROVIDER_H_
#define KORVIXSDK_PLATFORM_SYSTEM_TIME_PROVIDER_H_

#include <cstdint>

#include "korvixsdk/time_provider.h"

namespace korvixsdk {

/// The system clock. No state; any thread.
class SystemTimeProvider : public ITimeProvider {
 public:
  std::int64_t NowUnixSeconds() override;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_SYSTEM_TIME_PROVIDER_H_
