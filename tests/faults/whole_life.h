#ifndef KORVIXSDK_TESTS_FAULTS_WHOLE_LIFE_H_
#define KORVIXSDK_TESTS_FAULTS_WHOLE_LIFE_H_

#include <korvixsdk/korvixsdk.h>

#include <string>

namespace korvixsdk::test {

/// What each operation of one whole life of a host answered.
struct LifeAnswers {
  Error init;
  Result<std::string> device_id;
  Result<ServerResult> install;
  Result<UpdateInfo> check;
  Result<PreparedUpdate> prepare;
  Error launch;

  bool ok() const;
};

/// Calls every operation in its order, each whatever became of the others: where a step failed, the
/// next takes what `good` has in its place.
LifeAnswers LiveOnce(KorvixSDK& sdk, const SDKConfig& config, const std::string& updater,
                     const LifeAnswers* good);

/// Fails the test unless each answer is a success or a documented failure of its operation.
void ExpectDocumentedAnswers(const LifeAnswers& answers);

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FAULTS_WHOLE_LIFE_H_
