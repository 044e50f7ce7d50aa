#include "core/log_line.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/or_else.h"

namespace korvixsdk {
namespace {

using Write = void (ILogger::*)(const std::string&);

/// In one allocation: the parts may be long texts of the service.
std::string Joined(LineParts parts) {
  std::size_t length = 0;
  for (const std::string_view part : parts) length += part.size();
  std::string line(length, '\0');
  char* end = line.data();
  for (const std::string_view part : parts) end = std::copy(part.begin(), part.end(), end);
  return line;
}

void Log(ILogger* logger, Write write, LineParts parts) noexcept {
  if (logger == nullptr) return;
  OrElse([&] { return (logger->*write)(Joined(parts)), true; }, false);
}

}  // namespace

void LogInfo(ILogger* logger, LineParts parts) noexcept { Log(logger, &ILogger::LogInfo, parts); }

void LogWarning(ILogger* logger, LineParts parts) noexcept {
  Log(logger, &ILogger::LogWarning, parts);
}

void LogError(ILogger* logger, LineParts parts) noexcept { Log(logger, &ILogger::LogError, parts); }

}  // namespace korvixsdk
