#include "doctor/loose_lookup.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace update_host::doctor {
namespace {

using korvixsdk::Result;
using korvixsdk::UpdateInfo;
using korvixsdk::test::Script;
using korvixsdk::test::ScriptedServer;

/// Replies that a parser and the library read differently.
const std::vector<std::string> kReplies = {
    "x",
    "{}",
    R"({"code":400,"version":"2.0.0","download_url":"https:\/\/h\/p","msg":"hello"})",
    R"({"code":403,"version":"2.0.0","msg":"no\tway"})",
    R"({"code":403})",
    R"({"code":" 403 ","msg":""})",
    R"({"code":-1,"msg":"x"})",
    R"({"code":400.0,"msg":"x"})",
    R"({"code":99999999999,"msg":"x"})",
    R"({"code":"","msg":"x"})",
    R"({"error":{"code":500},"version":"2.0.0"})",
    R"({"history":[{"version":"1.0"}],"version":"2.0.0"})",
    R"({"kind":"version","since":"1.0","version":"2.0.0"})",
    R"({"version":null,"sha256":null})",
    R"({"version":2.0,"min_supported_version": 1.5 })",
    R"({"version":["2.0.0"]})",
    R"({"update_content":"caf\u00e9 \"quoted\" \\ \q\b\f\n\r","publish_time":"today"})",
    R"({"version":"2.0.0","download_url":"https://h)",
    R"({"version":"2.0.0\)",
    R"({"version")",
    R"({"version":)",
    "{\"version\" \v\f\r\n\t : \v2.0.0\f}",
    R"({"force_update":"True"})",
    R"({"force_update":" 1 ","version":"2.0.0"})",
};

TEST(LooseLookup, ReadsRepliesAsTheLibraryDoes) {
  const korvixsdk::test::TempFolder folder;
  ScriptedServer server(Script::Response(200, "x"));
  const auto services = korvixsdk::SdkFactory::CreateDefaultServices();
  korvixsdk::SDKConfig config;
  config.product_id = "editor";
  config.version = "1.4.0";
  config.cache_dir = folder.Entry("cache");
  config.server_base_url = server.address();
  config.services = services;
  korvixsdk::KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(config).ok());
  for (const std::string& reply : kReplies) {
    SCOPED_TRACE(reply);
    server.Play(Script::Response(200, reply));
    const Result<UpdateInfo> check =
        services->network_client->CheckForUpdate({config.product_id, config.version, "id"});
    ASSERT_TRUE(check.ok()) << check.error.message;
    const UpdateInfo offer = ReadOffer(reply);
    EXPECT_EQ(offer.force_update, check.value.force_update);
    EXPECT_EQ(offer.latest_version, check.value.latest_version);
    EXPECT_EQ(offer.min_supported_version, check.value.min_supported_version);
    EXPECT_EQ(offer.publish_time, check.value.publish_time);
    EXPECT_EQ(offer.update_content, check.value.update_content);
    EXPECT_EQ(offer.download_url, check.value.download_url);
    EXPECT_EQ(offer.sha256, check.value.sha256);
    EXPECT_EQ(offer.message, check.value.message);
  }
  services->client_service.reset();
  services->update_package_service.reset();
}

TEST(LooseLookup, TellsAMembersNameFromAText) {
  EXPECT_TRUE(LookUpLoosely(R"({"version" : 1})", "version")->names_a_member);
  EXPECT_FALSE(LookUpLoosely(R"({"kind":"version","x":1})", "version")->names_a_member);
  EXPECT_FALSE(LookUpLoosely(R"({"x":1})", "version"));
}

TEST(LooseLookup, TellsWhereTheNameIs) {
  EXPECT_EQ(LookUpLoosely(R"({"a":{"version":1}})", "version")->key_at, 6u);
}

}  // namespace
}  // namespace update_host::doctor
