#ifndef KORVIXSDK_NETWORK_UPDATE_CHECK_ENDPOINT_H_
#define KORVIXSDK_NETWORK_UPDATE_CHECK_ENDPOINT_H_

#include <string>

#include "korvixsdk/network_client.h"
#include "korvixsdk/result.h"
#include "korvixsdk/update_info.h"

namespace korvixsdk {

/// Sends an update check and reads the service's offer. Whether the offer is newer than the host is
/// decided by the caller.
///
/// \return the offer or the rejection; or `PerformGet`'s errors.
Result<UpdateInfo> SendUpdateCheck(const std::string& server_base_url,
                                   const UpdateCheckRequest& request);

/// The reading half. There is no schema: every body is a reply, and members that are not found
/// leave their fields empty.
UpdateInfo ReadUpdateReply(const std::string& body);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_UPDATE_CHECK_ENDPOINT_H_
