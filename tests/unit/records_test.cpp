#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "support/record_equality.h"
#include "support/recording_logger.h"

namespace korvixsdk::test {
namespace {

TEST(ErrorCode, HasTheFixedValuesWithTheirGaps) {
  EXPECT_EQ(kOk, 0);
  EXPECT_EQ(kInvalidArgument, 1);
  EXPECT_EQ(kInvalidState, 2);
  EXPECT_EQ(kNotFound, 3);
  EXPECT_EQ(kInvalidResponse, 4);
  EXPECT_EQ(kHashMismatch, 5);
  EXPECT_EQ(kNetworkError, 7);
  EXPECT_EQ(kFileSystemError, 10);
  EXPECT_EQ(kPlatformError, 11);
}

TEST(ErrorCode, IsASigned32BitNumber) {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<ErrorCode>, std::int32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Error::code), std::int32_t>));
}

TEST(Error, IsSuccessByDefault) {
  const Error error;
  EXPECT_TRUE(error.ok());
  EXPECT_EQ(error.code, 0);
  EXPECT_EQ(error.message, "");
}

TEST(Error, IsSuccessWithCodeZeroAndAMessage) {
  const Error error{kOk, "all went well"};
  EXPECT_TRUE(error.ok());
}

TEST(Error, IsFailureWithACodeAndNoMessage) {
  const Error error{kNotFound, ""};
  EXPECT_FALSE(error.ok());
}

TEST(Error, IsFailureWithACodeOutsideTheEnumeration) {
  const Error above{12345, "a host's own"};
  const Error below{-1, "a host's own"};
  EXPECT_FALSE(above.ok());
  EXPECT_FALSE(below.ok());
  EXPECT_EQ(above.code, 12345);
}

TEST(Result, IsSuccessByDefault) {
  const Result<std::string> result;
  EXPECT_TRUE(result.ok());
  EXPECT_EQ(result.value, "");
  EXPECT_EQ(result.error, Error{});
}

TEST(Result, IsSuccessWithCodeZeroAndAMessage) {
  const Result<std::string> result{"value", Error{kOk, "a message"}};
  EXPECT_TRUE(result.ok());
}

TEST(Result, IsFailureWithACodeEvenBesideAValue) {
  const Result<std::string> result{"value", Error{kHashMismatch, ""}};
  EXPECT_FALSE(result.ok());
}

TEST(Result, CarriesADefaultValueBesideAFailure) {
  const Error failure{kNetworkError, "down"};
  EXPECT_EQ((Result<std::string>{{}, failure}.value), "");
  EXPECT_EQ((Result<UpdateInfo>{{}, failure}.value), UpdateInfo{});
  EXPECT_EQ((Result<PreparedUpdate>{{}, failure}.value), PreparedUpdate{});
  EXPECT_EQ((Result<ServerResult>{{}, failure}.value), ServerResult{});
}

TEST(SdkConfig, IsEmptyByDefault) {
  const SDKConfig config;
  EXPECT_EQ(config.product_id, "");
  EXPECT_EQ(config.version, "");
  EXPECT_EQ(config.cache_dir, "");
  EXPECT_EQ(config.server_base_url, "");
  EXPECT_EQ(config.fallback_device_id_path, "");
  EXPECT_EQ(config.logger, nullptr);
  EXPECT_EQ(config.services, nullptr);
}

TEST(SdkConfig, HasItsMembersInTheFixedOrder) {
  const auto logger = std::make_shared<RecordingLogger>();
  const auto services = std::make_shared<ServiceRegistry>();
  const SDKConfig config{"product", "version", "cache", "url", "fallback", logger, services};
  EXPECT_EQ(config.product_id, "product");
  EXPECT_EQ(config.version, "version");
  EXPECT_EQ(config.cache_dir, "cache");
  EXPECT_EQ(config.server_base_url, "url");
  EXPECT_EQ(config.fallback_device_id_path, "fallback");
  EXPECT_EQ(config.logger, logger);
  EXPECT_EQ(config.services, services);
}

TEST(SdkConfig, SharesLoggerAndRegistryWithItsCopies) {
  SDKConfig config;
  config.logger = std::make_shared<RecordingLogger>();
  config.services = std::make_shared<ServiceRegistry>();
  const SDKConfig copy = config;
  EXPECT_EQ(copy.logger, config.logger);
  EXPECT_EQ(copy.services, config.services);
  EXPECT_EQ(config.logger.use_count(), 2);
  EXPECT_EQ(config.services.use_count(), 2);
}

TEST(SdkConfig, GivesUpItsPointersWhenMoved) {
  SDKConfig config;
  config.product_id = "product";
  config.logger = std::make_shared<RecordingLogger>();
  const SDKConfig moved = std::move(config);
  EXPECT_EQ(moved.product_id, "product");
  EXPECT_EQ(moved.logger.use_count(), 1);
}

TEST(UpdateInfo, IsEmptyByDefault) {
  const UpdateInfo info;
  EXPECT_FALSE(info.has_update);
  EXPECT_FALSE(info.force_update);
  EXPECT_EQ(info, (UpdateInfo{false, false, "", "", "", "", "", "", ""}));
}

TEST(UpdateInfo, HasItsMembersInTheFixedOrder) {
  const UpdateInfo info{true,  false, "latest", "minimum", "published",
                        "new", "url", "digest", "message"};
  EXPECT_TRUE(info.has_update);
  EXPECT_FALSE(info.force_update);
  EXPECT_EQ(info.latest_version, "latest");
  EXPECT_EQ(info.min_supported_version, "minimum");
  EXPECT_EQ(info.publish_time, "published");
  EXPECT_EQ(info.update_content, "new");
  EXPECT_EQ(info.download_url, "url");
  EXPECT_EQ(info.sha256, "digest");
  EXPECT_EQ(info.message, "message");
}

TEST(PreparedUpdate, IsEmptyByDefault) {
  const PreparedUpdate prepared;
  EXPECT_FALSE(prepared.ready);
  EXPECT_FALSE(prepared.sha256_verified);
  EXPECT_EQ(prepared, (PreparedUpdate{false, false, "", "", "", "", "", ""}));
}

TEST(PreparedUpdate, HasItsMembersInTheFixedOrder) {
  const PreparedUpdate prepared{true,     false,  "url",      "expected",
                                "actual", "path", "reserved", "message"};
  EXPECT_TRUE(prepared.ready);
  EXPECT_FALSE(prepared.sha256_verified);
  EXPECT_EQ(prepared.download_url, "url");
  EXPECT_EQ(prepared.expected_sha256, "expected");
  EXPECT_EQ(prepared.actual_sha256, "actual");
  EXPECT_EQ(prepared.package_path, "path");
  EXPECT_EQ(prepared.reserved, "reserved");
  EXPECT_EQ(prepared.message, "message");
}

TEST(ServerResult, IsEmptyByDefault) {
  const ServerResult result;
  EXPECT_FALSE(result.success);
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.message, "");
  EXPECT_FALSE(result.allowed);
  EXPECT_EQ(result.server_time, 0);
}

TEST(ServerResult, HasItsMembersInTheFixedOrder) {
  const ServerResult result{true, 401, "message", false, 9000000000};
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.code, 401);
  EXPECT_EQ(result.message, "message");
  EXPECT_FALSE(result.allowed);
  EXPECT_EQ(result.server_time, 9000000000);
}

TEST(ServerResult, HasA32BitCodeAndA64BitTime) {
  EXPECT_TRUE((std::is_same_v<decltype(ServerResult::code), std::int32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(ServerResult::server_time), std::int64_t>));
}

TEST(UpdateCheckRequest, HasItsMembersInTheFixedOrder) {
  const UpdateCheckRequest request{"product", "version", "device"};
  EXPECT_EQ(request.product_id, "product");
  EXPECT_EQ(request.version, "version");
  EXPECT_EQ(request.device_id, "device");
}

TEST(ClientManagerConfig, HoldsADefaultSdkConfig) {
  const ClientManagerConfig config;
  EXPECT_EQ(config.sdk_config.product_id, "");
  EXPECT_EQ(config.sdk_config.services, nullptr);
}

template <typename Record>
class ValueRecord : public testing::Test {};
using ValueRecords =
    testing::Types<Error, Result<std::string>, Result<UpdateInfo>, Result<PreparedUpdate>,
                   Result<ServerResult>, SDKConfig, UpdateInfo, PreparedUpdate, ServerResult,
                   UpdateCheckRequest, ServiceRegistry, ClientManagerConfig>;
TYPED_TEST_SUITE(ValueRecord, ValueRecords, );

TYPED_TEST(ValueRecord, IsACopyableAndMovableAggregate) {
  EXPECT_TRUE(std::is_aggregate_v<TypeParam>);
  EXPECT_TRUE(std::is_default_constructible_v<TypeParam>);
  EXPECT_TRUE(std::is_copy_constructible_v<TypeParam>);
  EXPECT_TRUE(std::is_copy_assignable_v<TypeParam>);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<TypeParam>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<TypeParam>);
}

}  // namespace
}  // namespace korvixsdk::test
