#ifndef KORVIXSDK_CORE_LOG_LINE_H_
#define KORVIXSDK_CORE_LOG_LINE_H_

#include <initializer_list>
#include <string_view>

#include "korvixsdk/logger.h"

namespace korvixsdk {

/// The parts of a log line, which is put together only where a logger takes it.
using LineParts = std::initializer_list<std::string_view>;

/// Hand a line to the logger, which may be null. A logger that throws, or a line for which memory
/// does not suffice, is no reason for an operation to fail: the line is lost.
void LogInfo(ILogger* logger, LineParts parts) noexcept;
void LogWarning(ILogger* logger, LineParts parts) noexcept;
void LogError(ILogger* logger, LineParts parts) noexcept;

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_LOG_LINE_H_
