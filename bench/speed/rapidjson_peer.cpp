#include <rapidjson/reader.h>

#include <utility>

#include "envelope_handler.h"
#include "json_peers.h"

namespace speed {
namespace {

struct Handler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
  EnvelopeHandler events{};

  bool Null() { return events.Other(); }
  bool Bool(bool value) { return events.OnBool(value); }
  bool Int(int value) { return events.OnInteger(value); }
  bool Uint(unsigned value) { return events.OnInteger(value); }
  bool Int64(std::int64_t value) { return events.OnInteger(value); }
  bool Uint64(std::uint64_t) { return events.Other(); }
  bool Double(double) { return events.Other(); }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return events.OnString({text, length});
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) {
    return events.OnKey({text, length});
  }
  bool StartObject() { return events.Open(); }
  bool EndObject(rapidjson::SizeType) { return events.Close(); }
  bool StartArray() { return events.Open(); }
  bool EndArray(rapidjson::SizeType) { return events.Close(); }
};

}  // namespace

korvixsdk::ResponseEnvelope ReadWithRapidJson(const std::string& body) {
  static rapidjson::Reader reader;
  Handler handler;
  rapidjson::StringStream stream(body.c_str());
  if (reader.Parse(stream, handler).IsError()) return {};
  handler.events.envelope().accepted = true;
  return std::move(handler.events.envelope());
}

}  // namespace speed
