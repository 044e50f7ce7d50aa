#include "bodies.h"

#include <cstdint>
#include <string_view>

#include "require.h"

namespace speed {
namespace {

constexpr std::string_view kOpening = "\"more\":{\"id\":7,\"list\":[";
constexpr std::string_view kPadding = "],\"text\":\"";
constexpr std::string_view kClosing = "\"}";

/// About 240 bytes that differ with the number.
std::string Record(std::uint32_t number) {
  const std::string digits = std::to_string(100000 + number * 2654435761u % 900000);
  return R"({"id":)" + digits + R"(,"name":"Plug-in \")" + digits +
         R"(\"","path":"C:\\tools\\editor\\)" + digits + R"(","share":0.)" + digits +
         R"(,"weight":-1.)" + digits + R"(e+10,"tags":["caf\u00e9","first line\nsecond line"],)" +
         R"("on":true,"parent":null,"nested":{"sizes":[)" + digits + R"(,2,[3,-4]],"label":)" +
         R"("checks documents while they are written"}})";
}

/// Fills up with records, then with a text, what head and tail leave of `size`.
std::string FillUp(std::string_view head, std::string_view tail, std::size_t size) {
  const std::size_t around = kPadding.size() + kClosing.size() + tail.size();
  Require(head.size() + kOpening.size() + around <= size, "a body is asked to be too short");
  std::string body;
  body.reserve(size);
  body.append(head).append(kOpening);
  std::string record = Record(1);
  for (std::uint32_t number = 2; body.size() + record.size() + around <= size; ++number) {
    body += record;
    record = ',' + Record(number);
  }
  body += kPadding;
  body.append(size - body.size() - kClosing.size() - tail.size(), 'x');
  body.append(kClosing).append(tail);
  Require(body.size() == size, "a body has not the size that was asked for");
  return body;
}

constexpr std::string_view kOffer =
    R"(,"code":400,"msg":"","version":"2.0.0","min_supported_version":"1.0.0",)"
    R"("publish_time":"2026-01-20 10:48:48","update_content":"Opens large files at once",)"
    R"("download_url":"http://127.0.0.1/packages/editor-2.0.0.pkg",)"
    R"("sha256":"7a97f5c61e4920469f73274091329d638cbab609ce073649c58ac5c4fe086c79",)"
    R"("force_update":true})";

}  // namespace

std::string InstallReply(std::size_t size) {
  return FillUp(
      R"({"code":400,"allowed":true,"success":true,"msg":"Welcome","server_time":1768906128,)", "}",
      size);
}

std::string InstallReplyWithMessage(const std::string& message) {
  return R"({"code":400,"allowed":true,"success":true,"server_time":1768906128,"msg":")" + message +
         "\"}";
}

std::string LongMessage(std::size_t size, bool escapes) {
  const std::string_view line =
      escapes ? "This licence ends in thirty days.\\n" : "This licence ends in thirty days. ";
  std::string message;
  while (message.size() < size) message += line;
  return message;
}

std::string UpdateReply(std::size_t size, bool with_members) {
  return FillUp("{", with_members ? kOffer : "}", size);
}

}  // namespace speed
