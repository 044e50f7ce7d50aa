#include <memory>

#include "benches.h"
#include "bodies.h"
#include "json_peers.h"
#include "measure.h"
#include "network/json_reader.h"
#include "require.h"

namespace speed {
namespace {

using Read = korvixsdk::ResponseEnvelope (*)(const std::string& body);

korvixsdk::ResponseEnvelope ReadOurs(const std::string& body) {
  return korvixsdk::ReadResponseEnvelope(body);
}

struct Reader {
  const char* name;
  Read read;
};
constexpr Reader kReaders[] = {{"ours", &ReadOurs},
                               {"rapidjson", &ReadWithRapidJson},
                               {"boost_json", &ReadWithBoostJson},
                               {"simdjson", &ReadWithSimdJson}};

void RequireRead(const Reader& reader, const std::string& body, const std::string& msg) {
  const korvixsdk::ResponseEnvelope envelope = reader.read(body);
  Require(envelope.accepted && envelope.code == 400 && envelope.allowed == true &&
              envelope.success == true && envelope.msg == msg && envelope.server_time == 1768906128,
          std::string("the reply as read by ") + reader.name);
  std::string cut = body.substr(0, body.size() - 1);
  AddSimdJsonPadding(cut);
  Require(!reader.read(cut).accepted, std::string("a reply cut short, read by ") + reader.name);
}

void RegisterRead(const Reader& reader, const std::string& text, const std::string& msg,
                  const std::string& name) {
  const auto body = std::make_shared<std::string>(text);
  AddSimdJsonPadding(*body);
  RequireRead(reader, *body, msg);
  Register(name, [body, read = reader.read] { return read(*body); });
}

}  // namespace

void RegisterReader() {
  for (const std::size_t size : {120, 4 << 10, 1 << 20}) {
    for (const Reader& reader : kReaders) {
      const std::string name = std::string("reader/") + reader.name + "/" + std::to_string(size);
      RegisterRead(reader, InstallReply(size), "Welcome", name);
    }
  }
  for (std::size_t size = 1 << 10; size <= 16 << 20; size *= 4) {
    RegisterRead(kReaders[0], InstallReply(size), "Welcome",
                 "growth_reader/ours/" + std::to_string(size));
  }
  constexpr std::size_t kLong = 2 << 10;
  const std::string plain = LongMessage(kLong, false);
  RegisterRead(kReaders[0], InstallReplyWithMessage(plain), plain, "reader_msg/ours/long");
  const std::string escaped = LongMessage(kLong, true);
  std::string meant;
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    meant += escaped[at] == '\\' ? (++at, '\n') : escaped[at];
  }
  RegisterRead(kReaders[0], InstallReplyWithMessage(escaped), meant, "reader_msg/ours/escapes");
}

}  // namespace speed
