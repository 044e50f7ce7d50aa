#ifndef KORVIXSDK_KORVIXSDK_H_
#define KORVIXSDK_KORVIXSDK_H_

/// \file
/// \brief Includes the whole public interface.

/// \namespace korvixsdk
/// \brief The whole library.

#include "korvixsdk/client_manager.h"
#include "korvixsdk/client_service.h"
#include "korvixsdk/crypto_provider.h"
#include "korvixsdk/device_id_provider.h"
#include "korvixsdk/error.h"
#include "korvixsdk/export.h"
#include "korvixsdk/file_system_provider.h"
#include "korvixsdk/korvix_sdk.h"
#include "korvixsdk/logger.h"
#include "korvixsdk/network_client.h"
#include "korvixsdk/prepared_update.h"
#include "korvixsdk/result.h"
#include "korvixsdk/sdk_config.h"
#include "korvixsdk/sdk_factory.h"
#include "korvixsdk/server_result.h"
#include "korvixsdk/service_registry.h"
#include "korvixsdk/time_provider.h"
#include "korvixsdk/update_info.h"
#include "korvixsdk/update_package_service.h"
#include "korvixsdk/update_policy.h"

#endif  // KORVIXSDK_KORVIXSDK_H_
