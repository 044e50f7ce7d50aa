#include <gtest/gtest.h>

#include <string>

#include "doctor/verdicts.h"
#include "programs/doctor/find_check.h"

namespace doctor {
namespace {

TEST(PackageName, PassesWhenPlain) {
  for (const std::string name : {"editor-2.0.0.pkg", "my%20editor.pkg", "CONSOLE.pkg", "COM10.pkg",
                                 "com.pkg", "a b.pkg", ".x", "LPT.pkg", "?id=5"}) {
    ExpectJudgement({name, "package.name", Status::kPass, "a plain name"},
                    CheckPackageName("https://h/" + name));
  }
}

TEST(PackageName, FailsWhereWindowsTakesNoSuchFile) {
  const Judgement judgements[] = {
      {R"(..\..\start.exe)", "package.name", Status::kFail, "a backslash"},
      {"C:editor.pkg", "package.name", Status::kFail, "a drive or a stream"},
      {"editor.pkg:stream", "package.name", Status::kFail, "a drive or a stream"},
      {"a<b", "package.name", Status::kFail, "reserved"},
      {"a>b", "package.name", Status::kFail, "reserved"},
      {"a\"b", "package.name", Status::kFail, "reserved"},
      {"a|b", "package.name", Status::kFail, "reserved"},
      {"a*b", "package.name", Status::kFail, "reserved"},
      {"a\tb", "package.name", Status::kFail, "a control character"},
      {"..", "package.name", Status::kFail, "that of a folder"},
      {".", "package.name", Status::kFail, "that of a folder"},
      {"editor.", "package.name", Status::kFail, "dot or space at the end"},
      {"editor ", "package.name", Status::kFail, "dot or space at the end"},
      {"CON", "package.name", Status::kFail, "a device"},
      {"nul.pkg", "package.name", Status::kFail, "a device"},
      {"Aux.tar.gz", "package.name", Status::kFail, "a device"},
      {"com1.pkg", "package.name", Status::kFail, "a device"},
      {"LPT9", "package.name", Status::kFail, "a device"},
      {"COM\xC2\xB2", "package.name", Status::kFail, "a device"},
      {"prn .txt", "package.name", Status::kFail, "a device"},
      {std::string(256, 'a'), "package.name", Status::kFail, "longer than 255"},
  };
  for (const Judgement& judgement : judgements) {
    ExpectJudgement(judgement, CheckPackageName("https://h/" + judgement.text));
  }
}

TEST(PackageName, WarnsOfWhatMaySurprise) {
  const Judgement judgements[] = {
      {"editor.pkg#latest", "package.name", Status::kWarn, "behind #"},
      {"\xC3\xA9"
       "diteur.pkg",
       "package.name", Status::kWarn, "code page"},
      {std::string(121, 'a'), "package.name", Status::kWarn, "259"},
  };
  for (const Judgement& judgement : judgements) {
    ExpectJudgement(judgement, CheckPackageName("https://h/" + judgement.text));
  }
}

}  // namespace
}  // namespace doctor
