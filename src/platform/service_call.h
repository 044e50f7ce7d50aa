#ifndef KORVIXSDK_PLATFORM_SERVICE_CALL_H_
#define KORVIXSDK_PLATFORM_SERVICE_CALL_H_

#include "platform/error_text.h"
#include "platform/fail.h"
#include "platform/or_else.h"

namespace korvixsdk {

/// Calls a service, which may be the host's own and throw whatever it likes. That becomes a failure
/// whose text names the service and, where the exception tells it, the reason.
///
/// \param service how messages call it, such as "Network client".
/// \param call answers an `Error` or a `Result<T>`.
template <typename Call>
auto CallService(const char* service, Call&& call) -> decltype(call()) {
  return OrElse(call, [service](const char* what) {
    return Failure{ErrorOf(kInvalidState,
                           {service, " threw an exception", what ? ": " : "", what ? what : ""})};
  });
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_SERVICE_CALL_H_
