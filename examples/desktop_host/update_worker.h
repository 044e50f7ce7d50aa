#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_WORKER_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_WORKER_H_

#include <korvixsdk/korvixsdk.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace desktop_host {

/// The thread on which an application with windows calls the library.
///
/// The library blocks its caller and a facade belongs to one thread. So one thread owns the facade,
/// calls run there one after the other, and what they answer is handed over on the thread of the
/// windows. Nothing here knows which window system that is.
///
/// All members are for the thread that made the worker.
class UpdateWorker {
 public:
  /// Called on the worker's thread whenever an answer waits. It must not deliver by itself but make
  /// the thread of the windows call `Deliver` soon: `PostMessage` is all that it takes on Windows.
  using PostToUi = std::function<void()>;

  /// `service` is the host's own core service; null gives the library's.
  explicit UpdateWorker(PostToUi post_to_ui,
                        std::shared_ptr<korvixsdk::IClientService> service = nullptr)
      : post_to_ui_(std::move(post_to_ui)),
        thread_([this, own = std::move(service)]() mutable { Work(std::move(own)); }) {}

  /// Forgets what has not begun and what was not delivered. A call that runs cannot be broken off:
  /// this waits for it, half a minute at worst, so hide the windows first. Not from within a
  /// `done`.
  ~UpdateWorker() {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      stopping_ = true;
      calls_.clear();
    }
    something_to_do_.notify_one();
    thread_.join();
  }

  UpdateWorker(const UpdateWorker&) = delete;
  UpdateWorker& operator=(const UpdateWorker&) = delete;

  /// Lets `call(KorvixSDK&)` run on the worker's thread and hands what it returns to `done` inside
  /// a later `Deliver`. `done` never sees the worker's thread, nor is it destroyed there.
  template <typename Call, typename Done>
  void Run(Call call, Done done) {
    using Answer = std::invoke_result_t<Call&, korvixsdk::KorvixSDK&>;
    auto kept_done = std::make_shared<Done>(std::move(done));
    Add([call = std::move(call), kept_done](korvixsdk::KorvixSDK& sdk) mutable {
      auto answer = std::make_shared<Answer>(call(sdk));
      return Delivery([kept_done = std::move(kept_done), answer = std::move(answer)] {
        (*kept_done)(std::move(*answer));
      });
    });
  }

  /// Hands over the answers that wait. A `done` may open a modal dialog, whose message loop then
  /// delivers what comes meanwhile.
  void Deliver() {
    while (const std::optional<Delivery> delivery = NextDelivery()) {
      --undelivered_;
      (*delivery)();
    }
  }

  /// Whether anything was run that has not been delivered.
  bool busy() const { return undelivered_ != 0; }

 private:
  using Delivery = std::function<void()>;
  using PendingCall = std::function<Delivery(korvixsdk::KorvixSDK&)>;

  void Add(PendingCall call) {
    ++undelivered_;
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      calls_.push_back(std::move(call));
    }
    something_to_do_.notify_one();
  }

  std::optional<Delivery> NextDelivery() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (deliveries_.empty()) return std::nullopt;
    Delivery first = std::move(deliveries_.front());
    deliveries_.pop_front();
    return first;
  }

  void Work(std::shared_ptr<korvixsdk::IClientService> service) {
    korvixsdk::KorvixSDK sdk(std::move(service));
    while (std::optional<PendingCall> call = NextCall()) {
      Delivery delivery = (*call)(sdk);
      const std::lock_guard<std::mutex> lock(mutex_);
      deliveries_.push_back(std::move(delivery));
      // Under the lock: once the destructor has it, no window is told anything any more.
      if (!stopping_) post_to_ui_();
    }
  }

  /// Waits for a call; nothing when the worker stops.
  std::optional<PendingCall> NextCall() {
    std::unique_lock<std::mutex> lock(mutex_);
    something_to_do_.wait(lock, [this] { return stopping_ || !calls_.empty(); });
    if (stopping_) return std::nullopt;
    PendingCall first = std::move(calls_.front());
    calls_.pop_front();
    return first;
  }

  const PostToUi post_to_ui_;
  int undelivered_ = 0;

  std::mutex mutex_;
  std::condition_variable something_to_do_;
  bool stopping_ = false;
  std::deque<PendingCall> calls_;
  std::deque<Delivery> deliveries_;

  std::thread thread_;  // Last: it uses all the others.
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_WORKER_H_
