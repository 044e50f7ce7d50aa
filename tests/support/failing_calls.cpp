#include "support/failing_calls.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace korvixsdk::test {
namespace {

struct Plan {
  std::string function;
  int nth = 0;
  FailingCall::Span span = FailingCall::Span::kOnce;
  int calls = 0;
  bool happened = false;
};

std::mutex plan_mutex;
Plan plan;
/// Only the thread of the plan is watched: a test's server calls the system too.
thread_local bool watched = false;
std::atomic<int> open_resources{0};

}  // namespace

FailingCall::FailingCall(std::string function, int nth, Span span) {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  plan = Plan{std::move(function), nth, span, 0, false};
  watched = true;
}

FailingCall::~FailingCall() {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  watched = false;
  plan = Plan{};
}

bool FailingCall::happened() const {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  return plan.happened;
}

bool FailsNow(const char* function) {
  if (!watched) return false;
  const std::lock_guard<std::mutex> lock(plan_mutex);
  if (plan.function != "*" && plan.function != function) return false;
  ++plan.calls;
  const bool fails =
      plan.span == FailingCall::Span::kOnce ? plan.calls == plan.nth : plan.calls >= plan.nth;
  plan.happened = plan.happened || fails;
  return fails;
}

bool FailsNowByNameOnly(const char* event) {
  if (!watched) return false;
  {
    const std::lock_guard<std::mutex> lock(plan_mutex);
    if (plan.function == "*") return false;
  }
  return FailsNow(event);
}

int OpenResources() { return open_resources; }
void CountOpened() { ++open_resources; }
void CountClosed() { --open_resources; }

}  // namespace korvixsdk::test
