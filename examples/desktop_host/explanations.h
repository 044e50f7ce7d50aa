#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_EXPLANATIONS_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_EXPLANATIONS_H_

#include <korvixsdk/korvixsdk.h>

#include <string>

namespace desktop_host {

/// What the application was doing when the library answered with a failure.
enum class Step { kStart, kIdentify, kCheck, kPrepare, kLaunch };

/// A failure twice: for the user, and for whoever has to find out why.
struct Explanation {
  std::string sentence;
  std::string details;
};

/// A failed step of the application named `product_name`; also an offer that was refused before
/// `PrepareUpdate`, with the reason in the details.
Explanation Explain(Step step, const korvixsdk::Error& error, const std::string& product_name);

/// A check that the service answered with a refusal. `message` is `UpdateInfo::message`.
Explanation ExplainRejection(const std::string& message);

/// A package that must not be installed: the details tell both digests.
Explanation ExplainMismatch(const korvixsdk::Result<korvixsdk::PreparedUpdate>& prepared,
                            const std::string& product_name);

/// Why an offered update is mandatory.
std::string WhyMandatory(const korvixsdk::UpdateInfo& offer, const std::string& product_name,
                         const std::string& version);

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_EXPLANATIONS_H_
