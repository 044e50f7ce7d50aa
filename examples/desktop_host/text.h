#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_TEXT_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_TEXT_H_

#include <string>

namespace desktop_host {

/// UTF-8 to what the windows take. Bytes that are no UTF-8 become replacement characters.
std::wstring Wide(const std::string& utf8);
std::string Utf8(const std::wstring& wide);

/// A path as the library takes it: narrow, in the process's code page. The manifest makes that
/// UTF-8; a Windows that does not know the manifest's wish yet loses what its own page lacks.
std::string NarrowPath(const std::wstring& wide);

/// A text of the service's, of which nothing is certain, for a control with several lines: line
/// ends as Windows has them, no other control characters, not longer than anyone reads.
std::wstring Paragraphs(const std::string& utf8);
/// The same for a place where one short line stands.
std::wstring ShortLine(const std::string& utf8);

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_TEXT_H_
