#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "doctor/verdicts.h"
#include "programs/doctor/find_check.h"

namespace doctor {
namespace {

const ReplyContext kHost = {"1.4.0"};
const std::string kDigest = "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16";
const std::string kRest =
    R"("download_url":"https://h/p","sha256":")" + kDigest + R"(","force_update":false})";
const std::string kSound =
    R"({"code":400,"version":"2.0.0","min_supported_version":"1.2.0","publish_time":"today",)"
    R"("update_content":"faster","msg":"hello",)" +
    kRest;

/// A sound reply with these members at its beginning.
std::string With(const std::string& members) { return "{" + members + "," + kRest; }

void ExpectJudgements(const std::vector<Judgement>& judgements) {
  for (const Judgement& judgement : judgements) {
    ExpectJudgement(judgement, Find(CheckUpdateReply(judgement.text, kHost), judgement.id));
  }
}

TEST(UpdateReplyChecks, PassASoundReply) {
  EXPECT_TRUE(AllPass(CheckUpdateReply(kSound, kHost)));
  EXPECT_TRUE(
      AllPass(CheckUpdateReply(With(R"("version":"2.10","history":[{"version":"1.0"}])"), kHost)));
}

TEST(UpdateReplyChecks, SayWhyAReplyIsNoJsonObject) {
  const char* const id = "update.json";
  ExpectJudgements({
      {"<html>sign in</html>", id, Status::kFail, "\"no update\""},
      {"[]", id, Status::kFail, "no object"},
      {R"({"version":"2.0.0","download_url":"https://h)", id, Status::kFail, "no JSON"},
      {"\xEF\xBB\xBF" + kSound, id, Status::kFail, "byte order mark"},
      {With("\"msg\":\"caf\xE9\""), id, Status::kWarn, "not UTF-8"},
      {"[]", "update.lookup", Status::kNotTried, "JSON"},
      {"[]", "update.types", Status::kNotTried, "JSON"},
      {"[]", "update.escapes", Status::kNotTried, "JSON"},
  });
}

TEST(UpdateReplyChecks, ReadAReplyThatIsCutAsFarAsHostsDo) {
  const std::string cut = R"({"version":"2.0.0","download_url":"https://h/p)";
  ExpectJudgements({
      {cut, "update.answer", Status::kPass, "version 2.0.0 is offered"},
      {cut, "update.digest", Status::kWarn, "no digest"},
  });
}

TEST(UpdateReplyChecks, FindNamesInsideEarlierValues) {
  const char* const id = "update.lookup";
  ExpectJudgements({
      {With(R"("history":[{"version":"1.0"}],"version":"2.0.0")"), id, Status::kFail,
       R"("version" is found inside the value of "history" and read as "1.0" instead of "2.0.0")"},
      {With(R"("kind":"version","since":"1.0","version":"2.0.0")"), id, Status::kFail,
       R"(inside the value of "kind" and read as "1.0")"},
      {With(R"("last":{"version":"2.0.0"},"version":"2.0.0")"), id, Status::kWarn, "by chance"},
      {With(R"("kind":"version","since":"1.0")"), id, Status::kFail, "where it is a text"},
      {With(R"("error":{"code":500},"version":"2.0.0")"), id, Status::kWarn,
       R"("code" is found inside the value of "error")"},
      {R"({"data":)" + kSound + "}", id, Status::kWarn, "depth does not matter"},
      {With(R"("note":"a \"version\": 3","version":"2.0.0")"), id, Status::kPass, ""},
  });
}

TEST(UpdateReplyChecks, FindRepeatedAndEscapedNames) {
  const char* const id = "update.lookup";
  ExpectJudgements({
      {With(R"("version":"2.0.0","version":"3.0.0")"), id, Status::kFail, "given twice, and the"},
      {With(R"("version":"2.0.0","version":"2.0.0")"), id, Status::kWarn, "given twice"},
      {With(R"("vers\u0069on":"2.0.0")"), id, Status::kFail, "escapes in its name"},
  });
}

TEST(UpdateReplyChecks, NameValuesOfAnotherForm) {
  const char* const id = "update.types";
  ExpectJudgements({
      {With(R"("version":2.10)"), id, Status::kWarn, "\"version\" is the number 2.10"},
      {With(R"("version":null)"), id, Status::kWarn, "the text \"null\""},
      {R"({"version":"2.0.0","sha256":null})", id, Status::kFail, "\"sha256\" is null"},
      {R"({"version":"2.0.0","download_url":null})", id, Status::kFail, "\"download_url\" is null"},
      {With(R"("version":["2.0.0"])"), id, Status::kFail, "\"version\" is not a text"},
      {With(R"("update_content":{"de":"neu"})"), id, Status::kFail, "\"update_content\" is not"},
      {With(R"("version":true)"), id, Status::kFail, "not a text"},
      {R"({"force_update":"True"})", id, Status::kWarn, "\"True\", which counts as no"},
      {R"({"force_update":null})", id, Status::kWarn, "counts as no"},
      {R"({"force_update":1})", id, Status::kPass, ""},
      {R"({"force_update":"true"})", id, Status::kPass, ""},
      {With(R"("code":-1)"), id, Status::kFail, "\"-1\", which counts as 400"},
      {With(R"("code":400.0)"), id, Status::kFail, "counts as 400"},
      {With(R"("code":null)"), id, Status::kFail, "counts as 400"},
      {With(R"("code":99999999999)"), id, Status::kFail, "counts as 400"},
      {With(R"("code":"400")"), id, Status::kWarn, "is a text"},
      {With(R"("code":403)"), id, Status::kPass, ""},
  });
}

TEST(UpdateReplyChecks, FindCodePointEscapes) {
  const char* const id = "update.escapes";
  ExpectJudgements({
      {R"({"download_url":"https://h/p?a=1\u0026b=2"})", id, Status::kFail, "\"download_url\""},
      {With(R"("update_content":"caf\u00e9")"), id, Status::kWarn, "\"update_content\""},
      {With(R"("note":"caf\u00e9")"), id, Status::kPass, ""},
      {With(R"("update_content":"C:\\users")"), id, Status::kPass, ""},
      {R"({"download_url":"https:\/\/h\/p"})", id, Status::kPass, ""},
  });
}

TEST(UpdateReplyChecks, JudgeTheOffer) {
  const char* const id = "update.answer";
  ExpectJudgements({
      {kSound, id, Status::kPass, "version 2.0.0 is offered"},
      {"{}", id, Status::kPass, "nothing is offered"},
      {R"({"version":"2.0.0"})", id, Status::kFail, "without \"download_url\""},
      {R"({"code":403,"msg":"expired"})", id, Status::kWarn, "code 403: expired"},
      {R"({"code":403})", id, Status::kWarn, "Server rejected update request"},
      {With(R"("code":403,"version":"2.0.0")"), id, Status::kWarn, "which hosts take"},
      {With(R"("version":"v2.0.0")"), id, Status::kFail, "\"v2.0.0\", which is no version"},
      {With(R"("version":"2..0")"), id, Status::kFail, "no version"},
      {With(R"("version":"2.0","min_supported_version":"latest")"), id, Status::kFail,
       "\"latest\""},
  });
}

TEST(UpdateReplyChecks, JudgeTheDigest) {
  const char* const id = "update.digest";
  const std::string offer = R"({"version":"2.0.0","download_url":"https://h/p","sha256":")";
  std::string capitals = kDigest;
  for (char& digit : capitals) digit = digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
  ExpectJudgements({
      {kSound, id, Status::kPass, "64 lowercase digits"},
      {offer + capitals + "\"}", id, Status::kFail, "in capitals"},
      {offer + kDigest.substr(1) + "\"}", id, Status::kFail, "no SHA-256"},
      {offer + " " + kDigest + "\"}", id, Status::kFail, "no SHA-256"},
      {offer + "\"}", id, Status::kWarn, "no digest"},
      {"{}", id, Status::kNotTried, "no package is offered"},
  });
}

}  // namespace
}  // namespace doctor
