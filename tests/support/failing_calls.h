#ifndef KORVIXSDK_TESTS_SUPPORT_FAILING_CALLS_H_
#define KORVIXSDK_TESTS_SUPPORT_FAILING_CALLS_H_

#include <string>

namespace korvixsdk::test {

/// Makes calls of wrapped system and library functions fail. The linker's --wrap sends each of
/// these functions to a wrapper, which asks `FailsNow` and otherwise calls the real one.

/// While it lives, the `nth` call (from 1) of `function` in this thread fails, or all from the
/// `nth` on. `function` "*" counts the calls of all wrapped functions together.
class FailingCall {
 public:
  enum class Span { kOnce, kForEver };

  explicit FailingCall(std::string function, int nth = 1, Span span = Span::kOnce);
  ~FailingCall();
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;

  /// Whether a call was made to fail so far.
  bool happened() const;
};

/// For the wrappers: counts the call and says whether it is to fail.
bool FailsNow(const char* function);

/// The same for events that "*" leaves aside.
bool FailsNowByNameOnly(const char* event);

/// Handles, buffers and the like that wrapped functions gave out and did not take back yet.
int OpenResources();
void CountOpened();
void CountClosed();

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_FAILING_CALLS_H_
