#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "doctor/verdicts.h"
#include "programs/doctor/find_check.h"

namespace doctor {
namespace {

constexpr char kSound[] = R"({"code": 400, "allowed": true, "success": true, "msg": "Welcome", )"
                          R"("server_time": 1768906128})";

std::string Nested(int depth) {
  const auto levels = static_cast<std::size_t>(depth - 1);
  return R"({"code":400,"allowed":true,"x":)" + std::string(levels, '[') +
         std::string(levels, ']') + "}";
}

void ExpectJudgements(const std::vector<Judgement>& judgements) {
  for (const Judgement& judgement : judgements) {
    ExpectJudgement(judgement, Find(CheckInstallReply(judgement.text), judgement.id));
  }
}

TEST(InstallReplyChecks, PassASoundReply) {
  EXPECT_TRUE(AllPass(CheckInstallReply(kSound)));
  EXPECT_TRUE(AllPass(CheckInstallReply(R"({"code":401,"allowed":true})")));
  EXPECT_TRUE(
      AllPass(CheckInstallReply(" \r\n{\"allowed\":true,\"code\":400,\"x\":[{}, -1.5e3]}\t")));
  EXPECT_TRUE(AllPass(CheckInstallReply(R"({"code":400,"allowed":true,"x":1,"x":2})")));
  EXPECT_TRUE(AllPass(CheckInstallReply(R"({"\u0063ode":400,"allowed":true,"msg":"a\"}b"})")));
}

TEST(InstallReplyChecks, SayWhyAReplyIsNoJsonObject) {
  const std::string zero("{\"code\":400,\"allowed\":true}\0", 28);
  ExpectJudgements({
      {"", "install.json", Status::kFail, "nothing but space"},
      {" \n", "install.json", Status::kFail, "nothing but space"},
      {"<html></html>", "install.json", Status::kFail, "no JSON, as byte 1 shows"},
      {R"({"code":400,"allowed":true,})", "install.json", Status::kFail, "no JSON, as byte 28"},
      {R"([{"code":400,"allowed":true}])", "install.json", Status::kFail, "no object"},
      {R"({"code":400,"allowed":true}{})", "install.json", Status::kFail, "no JSON"},
      {R"({"code":0400,"allowed":true})", "install.json", Status::kFail, "no JSON"},
      {"\xEF\xBB\xBF" + std::string(kSound), "install.json", Status::kFail, "byte order mark"},
      {zero, "install.json", Status::kFail, "zero byte"},
      {"{\"code\":400,\"allowed\":true}\xFF", "install.json", Status::kFail, "no JSON"},
      {Nested(65), "install.json", Status::kFail, "deeper than 64"},
      {Nested(64), "install.json", Status::kPass, "one JSON object"},
  });
}

TEST(InstallReplyChecks, TryNothingElseOnAReplyThatCannotBeRead) {
  for (const char* const id : {"install.members", "install.agreement", "install.answer"}) {
    ExpectJudgement({"", id, Status::kNotTried, "cannot be read"},
                    Find(CheckInstallReply("x"), id));
  }
}

TEST(InstallReplyChecks, ReadTheRestOfAReplyThatIsNotUtf8) {
  const std::string reply = "{\"code\":400,\"allowed\":true,\"msg\":\"caf\xE9\"}";
  ExpectJudgements({
      {reply, "install.json", Status::kWarn, "not UTF-8"},
      {reply, "install.members", Status::kPass, ""},
      {reply, "install.answer", Status::kPass, "caf?"},
  });
}

TEST(InstallReplyChecks, LeaveNumbersBeyondTheirReaderUndecided) {
  const std::string reply = R"({"code":400,"allowed":true,"x":1e999})";
  ExpectJudgements({
      {reply, "install.json", Status::kWarn, "a number beyond"},
      {reply, "install.members", Status::kNotTried, ""},
  });
}

TEST(InstallReplyChecks, NameTheMemberThatIsMissingOrOfAnotherForm) {
  const char* const id = "install.members";
  ExpectJudgements({
      {R"({"code":400})", id, Status::kFail, "\"allowed\" is missing"},
      {R"({"allowed":true})", id, Status::kFail, "\"code\" is missing"},
      {R"({"data":{"code":400,"allowed":true}})", id, Status::kFail, "\"code\" is missing"},
      {R"({"code":"400","allowed":true})", id, Status::kFail,
       "\"code\" is \"400\", not an integer"},
      {R"({"code":400.0,"allowed":true})", id, Status::kFail, "\"code\" is 400.0, not an integer"},
      {R"({"code":4e2,"allowed":true})", id, Status::kFail, "\"code\" is 4e2"},
      {R"({"code":4294967696,"allowed":true})", id, Status::kFail, "not an integer of 32 bits"},
      {R"({"code":400,"allowed":1})", id, Status::kFail, "\"allowed\" is 1, not true or false"},
      {R"({"code":400,"allowed":true,"success":"true"})", id, Status::kFail, "\"success\" is"},
      {R"({"code":400,"allowed":true,"msg":null})", id, Status::kFail,
       "\"msg\" is null, not a text"},
      {R"({"code":400,"allowed":true,"server_time":"now"})", id, Status::kFail, "\"server_time\""},
      {R"({"code":400,"allowed":true,"server_time":9223372036854775808})", id, Status::kFail,
       "of 64 bits"},
      {R"({"code":400,"code":400,"allowed":true})", id, Status::kFail, "\"code\" is given more"},
      {R"({"code":400,"allowed":true,"msg":"a","msg":"a"})", id, Status::kFail, "\"msg\" is given"},
  });
}

TEST(InstallReplyChecks, FindContradictions) {
  const char* const id = "install.agreement";
  ExpectJudgements({
      {R"({"code":400,"allowed":false})", id, Status::kFail,
       "400 accepts, but \"allowed\" is false"},
      {R"({"code":202,"allowed":true})", id, Status::kFail, "202 rejects, but \"allowed\" is true"},
      {R"({"code":400,"allowed":true,"success":false})", id, Status::kFail, "\"success\" and"},
      {R"({"code":202,"allowed":false,"success":false})", id, Status::kPass, ""},
      {R"({"allowed":false})", id, Status::kNotTried, "cannot be read"},
  });
}

TEST(InstallReplyChecks, TellOfARejectionAndOfMilliseconds) {
  const char* const id = "install.answer";
  ExpectJudgements({
      {R"({"code":202,"allowed":false,"msg":"expired"})", id, Status::kWarn, "code 202: expired"},
      {R"({"code":400,"allowed":true,"server_time":1768906128000})", id, Status::kWarn,
       "milliseconds"},
      {kSound, id, Status::kPass, "accepted: Welcome"},
      {R"({"code":400,"allowed":false})", id, Status::kNotTried, "no answer"},
  });
}

}  // namespace
}  // namespace doctor
