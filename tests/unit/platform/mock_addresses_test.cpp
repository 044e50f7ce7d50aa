#include "platform/mock_addresses.h"

#include <gtest/gtest.h>

namespace korvixsdk {
namespace {

TEST(MockMode, HasItsFixedValues) {
  EXPECT_EQ(static_cast<int>(MockMode::kNormal), 0);
  EXPECT_EQ(static_cast<int>(MockMode::kReject), 1);
  EXPECT_EQ(static_cast<int>(MockMode::kOffline), 2);
  EXPECT_EQ(static_cast<int>(MockMode::kInvalid), 3);
  EXPECT_EQ(sizeof(MockMode), 4u);
}

TEST(IsMockUrl, TakesEveryAddressWithThePrefix) {
  EXPECT_TRUE(IsMockUrl("mock://"));
  EXPECT_TRUE(IsMockUrl("mock://service"));
  EXPECT_TRUE(IsMockUrl("mock:///"));
}

TEST(IsMockUrl, TakesNothingElse) {
  for (const char* const other : {"", "m", "mock:/", "mock:", "MOCK://", "Mock://service",
                                  " mock://", "http://mock://", "xmock://service", "mock//"}) {
    EXPECT_FALSE(IsMockUrl(other)) << other;
  }
}

TEST(ClassifyMockUrl, IsNormalWithoutAWord) {
  for (const char* const address :
       {"mock://", "mock://service", "mock://OFFLINE", "mock://Reject", "mock://INVALID",
        "mock://off-line", "mock://offlin", "mock://rejec", "mock://nvalid"}) {
    EXPECT_EQ(ClassifyMockUrl(address), MockMode::kNormal) << address;
  }
}

TEST(ClassifyMockUrl, FindsAWordAnywhereInTheAddress) {
  EXPECT_EQ(ClassifyMockUrl("mock://offline"), MockMode::kOffline);
  EXPECT_EQ(ClassifyMockUrl("mock://reject"), MockMode::kReject);
  EXPECT_EQ(ClassifyMockUrl("mock://invalid"), MockMode::kInvalid);
  EXPECT_EQ(ClassifyMockUrl("mock://host/path?mode=xofflinex"), MockMode::kOffline);
  EXPECT_EQ(ClassifyMockUrl("mock://rejected"), MockMode::kReject);
  EXPECT_EQ(ClassifyMockUrl("mock://host#uninvalidated"), MockMode::kInvalid);
}

TEST(ClassifyMockUrl, PutsOfflineBeforeRejectBeforeInvalid) {
  EXPECT_EQ(ClassifyMockUrl("mock://reject/offline"), MockMode::kOffline);
  EXPECT_EQ(ClassifyMockUrl("mock://invalid/offline"), MockMode::kOffline);
  EXPECT_EQ(ClassifyMockUrl("mock://reject/invalid"), MockMode::kReject);
  EXPECT_EQ(ClassifyMockUrl("mock://invalid/reject"), MockMode::kReject);
  EXPECT_EQ(ClassifyMockUrl("mock://invalid/reject/offline"), MockMode::kOffline);
}

}  // namespace
}  // namespace korvixsdk
