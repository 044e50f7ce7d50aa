#include <boost/json/basic_parser_impl.hpp>
#include <limits>
#include <utility>

#include "envelope_handler.h"
#include "json_peers.h"

namespace speed {
namespace {

using boost::json::error_code;
using boost::json::string_view;

/// Keys and texts come in parts where they hold escapes; the parts are joined only at the outermost
/// level, where one of them may be wanted.
struct Handler {
  static constexpr std::size_t max_object_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_array_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_key_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_string_size = std::numeric_limits<std::size_t>::max();

  EnvelopeHandler events{};
  int depth = 0;
  std::string parts{};

  static bool Told(bool going_on, error_code& error) {
    if (!going_on) error = boost::json::error::syntax;
    return going_on;
  }

  bool Part(string_view part) {
    if (depth == 1) parts.append(part.data(), part.size());
    return true;
  }

  template <typename Event>
  bool Whole(string_view last, Event&& event) {
    if (parts.empty()) return event(std::string_view(last.data(), last.size()));
    Part(last);
    const bool going_on = event(std::string_view(parts));
    parts.clear();
    return going_on;
  }

  bool Open(error_code& error) {
    ++depth;
    return Told(events.Open(), error);
  }
  bool Close() {
    --depth;
    return events.Close();
  }

  bool on_document_begin(error_code&) {
    events.Begin();
    depth = 0;
    parts.clear();
    return true;
  }
  bool on_document_end(error_code&) { return true; }
  bool on_object_begin(error_code& error) { return Open(error); }
  bool on_object_end(std::size_t, error_code&) { return Close(); }
  bool on_array_begin(error_code& error) { return Open(error); }
  bool on_array_end(std::size_t, error_code&) { return Close(); }
  bool on_key_part(string_view part, std::size_t, error_code&) { return Part(part); }
  bool on_key(string_view last, std::size_t, error_code&) {
    return Whole(last, [this](std::string_view key) { return events.OnKey(key); });
  }
  bool on_string_part(string_view part, std::size_t, error_code&) { return Part(part); }
  bool on_string(string_view last, std::size_t, error_code& error) {
    return Told(Whole(last, [this](std::string_view text) { return events.OnString(text); }),
                error);
  }
  bool on_number_part(string_view, error_code&) { return true; }
  bool on_int64(std::int64_t value, string_view, error_code& error) {
    return Told(events.OnInteger(value), error);
  }
  bool on_uint64(std::uint64_t, string_view, error_code& error) {
    return Told(events.Other(), error);
  }
  bool on_double(double, string_view, error_code& error) { return Told(events.Other(), error); }
  bool on_bool(bool value, error_code& error) { return Told(events.OnBool(value), error); }
  bool on_null(error_code& error) { return Told(events.Other(), error); }
  bool on_comment_part(string_view, error_code&) { return true; }
  bool on_comment(string_view, error_code&) { return true; }
};

}  // namespace

korvixsdk::ResponseEnvelope ReadWithBoostJson(const std::string& body) {
  static boost::json::basic_parser<Handler> parser{boost::json::parse_options()};
  parser.reset();
  error_code error;
  const std::size_t read = parser.write_some(false, body.data(), body.size(), error);
  if (error || read != body.size()) return {};
  korvixsdk::ResponseEnvelope& envelope = parser.handler().events.envelope();
  envelope.accepted = true;
  return std::move(envelope);
}

}  // namespace speed
