#include "desktop_host/update_worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/host_config.h"
#include "support/temp_folder.h"

namespace desktop_host {
namespace {

using korvixsdk::Error;
using korvixsdk::KorvixSDK;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

/// The thread of the windows: it sleeps until somebody posts to it.
class Ui {
 public:
  UpdateWorker::PostToUi poster() {
    return [this] {
      const std::lock_guard<std::mutex> lock(mutex_);
      ++posts_;
      posted_.notify_one();
    };
  }
  int posts() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return posts_;
  }
  bool WaitForPosts(int count) {
    std::unique_lock<std::mutex> lock(mutex_);
    return posted_.wait_for(lock, std::chrono::seconds(60), [&] { return posts_ >= count; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  int posts_ = 0;
};

/// A core service that is the host's own and tells on which threads it lived.
class ThreadNotingService : public korvixsdk::IClientService {
 public:
  explicit ThreadNotingService(std::set<std::thread::id>* threads) : threads_(threads) {}
  ~ThreadNotingService() override { threads_->insert(std::this_thread::get_id()); }

  Error Init(const korvixsdk::SDKConfig&) override { return Note(Error{}); }
  Result<std::string> GetDeviceId() override { return Note(Result<std::string>{"id", {}}); }
  Result<UpdateInfo> CheckForUpdate() override { return Note(Result<UpdateInfo>{}); }
  Result<korvixsdk::ServerResult> ReportInstall() override { return {}; }
  Result<korvixsdk::PreparedUpdate> PrepareUpdate(const UpdateInfo&) override { return {}; }
  Error LaunchPreparedUpdate(const korvixsdk::PreparedUpdate&, const std::string&) override {
    return Note(Error{korvixsdk::kNotFound, "Updater executable was not found"});
  }
  std::string GetLastError() const override { return {}; }

 private:
  template <typename T>
  T Note(T answer) {
    threads_->insert(std::this_thread::get_id());
    return answer;
  }

  std::set<std::thread::id>* threads_;
};

TEST(UpdateWorker, CallsAndReleasesTheServiceOnOneThreadOfItsOwn) {
  std::set<std::thread::id> threads;
  Ui ui;
  {
    UpdateWorker worker(ui.poster(), std::make_shared<ThreadNotingService>(&threads));
    worker.Run([](KorvixSDK& sdk) { return sdk.GetDeviceId(); }, [](Result<std::string>) {});
    worker.Run([](KorvixSDK& sdk) { return sdk.CheckForUpdate(); }, [](Result<UpdateInfo>) {});
    ASSERT_TRUE(ui.WaitForPosts(2));
  }
  EXPECT_EQ(threads.size(), 1u);
  EXPECT_EQ(threads.count(std::this_thread::get_id()), 0u);
}

TEST(UpdateWorker, HandsAnswersOverOnTheThreadThatDelivers) {
  Ui ui;
  std::set<std::thread::id> threads;
  std::thread::id handed_over_on;
  Error answer;
  UpdateWorker worker(ui.poster(), std::make_shared<ThreadNotingService>(&threads));
  worker.Run([](KorvixSDK& sdk) { return sdk.LaunchPreparedUpdate({}, "updater"); },
             [&](const Error& error) {
               handed_over_on = std::this_thread::get_id();
               answer = error;
             });
  ASSERT_TRUE(ui.WaitForPosts(1));
  EXPECT_EQ(handed_over_on, std::thread::id()) << "before Deliver";
  worker.Deliver();
  EXPECT_EQ(handed_over_on, std::this_thread::get_id());
  EXPECT_EQ(answer.code, korvixsdk::kNotFound);
  EXPECT_EQ(answer.message, "Updater executable was not found");
}

TEST(UpdateWorker, AnswersInTheOrderOfTheCallsAndPostsOnceForEach) {
  Ui ui;
  std::vector<int> answers;
  UpdateWorker worker(ui.poster());
  for (int i = 0; i < 50; ++i) {
    worker.Run([i](KorvixSDK&) { return i; }, [&](int answer) { answers.push_back(answer); });
  }
  ASSERT_TRUE(ui.WaitForPosts(50));
  worker.Deliver();
  ASSERT_EQ(answers.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(answers[static_cast<std::size_t>(i)], i);
  EXPECT_EQ(ui.posts(), 50);
}

TEST(UpdateWorker, IsBusyFromTheCallUntilItsAnswerIsHandedOver) {
  Ui ui;
  UpdateWorker worker(ui.poster());
  EXPECT_FALSE(worker.busy());
  bool busy_inside = true;
  worker.Run([](KorvixSDK&) { return 1; }, [&](int) { busy_inside = worker.busy(); });
  EXPECT_TRUE(worker.busy());
  ASSERT_TRUE(ui.WaitForPosts(1));
  EXPECT_TRUE(worker.busy());
  worker.Deliver();
  EXPECT_FALSE(busy_inside);
  EXPECT_FALSE(worker.busy());
}

TEST(UpdateWorker, GoesThroughAnUpdateOfTheMockServer) {
  const korvixsdk::test::TempFolder folder;
  Ui ui;
  const korvixsdk::SDKConfig config = korvixsdk::test::HostConfig(folder);
  UpdateWorker worker(ui.poster());
  std::string offered;
  worker.Run([config](KorvixSDK& sdk) { return sdk.Init(config); },
             [&](const Error& error) { EXPECT_TRUE(error.ok()) << error.message; });
  worker.Run([](KorvixSDK& sdk) { return sdk.CheckForUpdate(); },
             [&](const Result<UpdateInfo>& check) { offered = check.value.latest_version; });
  ASSERT_TRUE(ui.WaitForPosts(2));
  worker.Deliver();
  EXPECT_EQ(offered, "9.9.9");
}

TEST(UpdateWorker, TakesAnotherCallFromWithinAnAnswer) {
  Ui ui;
  UpdateWorker worker(ui.poster());
  std::vector<int> answers;
  worker.Run([](KorvixSDK&) { return 1; },
             [&](int first) {
               answers.push_back(first);
               worker.Run([first](KorvixSDK&) { return first + 1; },
                          [&](int second) { answers.push_back(second); });
             });
  ASSERT_TRUE(ui.WaitForPosts(1));
  worker.Deliver();
  ASSERT_TRUE(ui.WaitForPosts(2));
  worker.Deliver();
  EXPECT_EQ(answers, (std::vector<int>{1, 2}));
}

TEST(UpdateWorker, DeliversInsideAnAnswerAsAModalDialogDoes) {
  Ui ui;
  UpdateWorker worker(ui.poster());
  std::vector<int> answers;
  worker.Run([](KorvixSDK&) { return 1; },
             [&](int) {
               worker.Run([](KorvixSDK&) { return 2; },
                          [&](int inner) { answers.push_back(inner); });
               ASSERT_TRUE(ui.WaitForPosts(2));
               worker.Deliver();
               answers.push_back(1);
             });
  ASSERT_TRUE(ui.WaitForPosts(1));
  worker.Deliver();
  EXPECT_EQ(answers, (std::vector<int>{2, 1}));
  EXPECT_FALSE(worker.busy());
}

TEST(UpdateWorker, WaitsAtItsEndForTheCallThatRunsAndForgetsTheOthers) {
  Ui ui;
  std::atomic<bool> first_ended{false};
  std::atomic<bool> second_ran{false};
  std::promise<void> first_runs;
  std::promise<void> second_forgotten;
  bool handed_over = false;
  {
    UpdateWorker worker(ui.poster());
    worker.Run(
        [&](KorvixSDK&) {
          first_runs.set_value();
          second_forgotten.get_future().wait();
          first_ended = true;
          return 1;
        },
        [&](int) { handed_over = true; });
    first_runs.get_future().wait();
    // Lets the first call end as soon as the worker has forgotten the second one.
    const auto signal = [&](int* number) {
      delete number;
      second_forgotten.set_value();
    };
    worker.Run(
        [&, kept = std::shared_ptr<int>(new int(2), signal)](KorvixSDK&) {
          second_ran = true;
          return *kept;
        },
        [&](int) { handed_over = true; });
  }
  EXPECT_TRUE(first_ended);
  EXPECT_FALSE(second_ran);
  EXPECT_FALSE(handed_over);
  EXPECT_EQ(ui.posts(), 0) << "to a window that may be gone";
}

TEST(UpdateWorker, DestroysWhatAnAnswerHoldsOnTheThreadOfTheWindows) {
  Ui ui;
  std::set<std::thread::id> destroyed_on;
  const auto held = [&] {
    return std::shared_ptr<int>(new int(1), [&](int* number) {
      delete number;
      destroyed_on.insert(std::this_thread::get_id());
    });
  };
  {
    UpdateWorker worker(ui.poster());
    worker.Run([](KorvixSDK&) { return 1; }, [kept = held()](int) {});
    ASSERT_TRUE(ui.WaitForPosts(1));
    worker.Deliver();
    EXPECT_EQ(destroyed_on.size(), 1u);
    worker.Run([](KorvixSDK&) { return 2; }, [kept = held()](int) {});  // Never delivered.
  }
  EXPECT_EQ(destroyed_on, std::set<std::thread::id>{std::this_thread::get_id()});
}

}  // namespace
}  // namespace desktop_host
