#include "support/failing_calls.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace korvixsdk::test {
namespace {

struct Plan {
  bool active = false;
  std::string function;
  int nth = 0;
  FailingCall::Span span = FailingCall::Span::kOnce;
  int calls = 0;
  bool happened = false;
};

std::mutex plan_mutex;
Plan plan;
std::atomic<int> open_resources{0};

}  // namespace

FailingCall::FailingCall(std::string function, int nth, Span span) {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  plan = Plan{true, std::move(function), nth, span, 0, false};
}

FailingCall::~FailingCall() {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  plan = Plan{};
}

bool FailingCall::happened() const {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  return plan.happened;
}

bool FailsNow(const char* function) {
  const std::lock_guard<std::mutex> lock(plan_mutex);
  if (!plan.active || (plan.function != "*" && plan.function != function)) return false;
  ++plan.calls;
  const bool fails =
      plan.span == FailingCall::Span::kOnce ? plan.calls == plan.nth : plan.calls >= plan.nth;
  plan.happened = plan.happened || fails;
  return fails;
}

int OpenResources() { return open_resources; }
void CountOpened() { ++open_resources; }
void CountClosed() { --open_resources; }

}  // namespace korvixsdk::test
