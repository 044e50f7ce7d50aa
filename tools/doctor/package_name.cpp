#include <algorithm>
#include <string_view>

#include "doctor/verdicts.h"
#include "update/package_path.h"

namespace doctor {
namespace {

/// Of UTF-16 units on Windows and of bytes on Linux; bytes are never fewer.
constexpr std::size_t kLongestName = 255;
/// Room in a path of 259 characters for a cache folder and what an updater may append.
constexpr std::size_t kComfortableName = 120;

constexpr char kRemedy[] =
    "Let \"download_url\" end in a plain file name of letters, digits, dots, hyphens and "
    "underscores";

std::string UpperAscii(std::string text) {
  for (char& character : text) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  return text;
}

/// Windows takes these for devices, also with an extension or spaces behind them.
bool IsDeviceName(const std::string& name) {
  std::string stem = UpperAscii(name.substr(0, name.find('.')));
  stem.erase(stem.find_last_not_of(' ') + 1);
  for (const char* const device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}) {
    if (stem == device) return true;
  }
  if (stem.compare(0, 3, "COM") != 0 && stem.compare(0, 3, "LPT") != 0) return false;
  const std::string number = stem.substr(3);
  if (number.size() == 1) return number.front() >= '0' && number.front() <= '9';
  // Superscript 1, 2 and 3 count as digits.
  return number == "\xC2\xB9" || number == "\xC2\xB2" || number == "\xC2\xB3";
}

bool HasControl(const std::string& name) {
  return std::any_of(name.begin(), name.end(),
                     [](char character) { return static_cast<unsigned char>(character) < 0x20; });
}

bool HasMoreThanAscii(const std::string& name) {
  return std::any_of(name.begin(), name.end(),
                     [](char character) { return static_cast<unsigned char>(character) >= 0x80; });
}

void CheckCharacters(const std::string& name, Findings& findings) {
  if (name.find('\\') != std::string::npos) {
    findings.Fail("a backslash leads to another folder on Windows", kRemedy);
  }
  if (name.find(':') != std::string::npos) {
    findings.Fail("a colon names a drive or a stream on Windows", kRemedy);
  }
  if (name.find_first_of("<>\"|*") != std::string::npos) {
    findings.Fail("one of < > \" | * is reserved on Windows", kRemedy);
  }
  if (HasControl(name)) findings.Fail("a control character", kRemedy);
  if (name.find('#') != std::string::npos) {
    findings.Warn("the part behind # becomes part of the name", kRemedy);
  }
  if (HasMoreThanAscii(name)) {
    findings.Warn("characters beyond ASCII depend on the host's code page", kRemedy);
  }
}

void CheckWhole(const std::string& name, Findings& findings) {
  if (name == "." || name == "..") {
    findings.Fail("the name is that of a folder", kRemedy);
  } else if (name.back() == '.' || name.back() == ' ') {
    findings.Fail("Windows drops the dot or space at the end", kRemedy);
  }
  if (IsDeviceName(name)) findings.Fail("the name is that of a device on Windows", kRemedy);
  if (name.size() > kLongestName) {
    findings.Fail("the name is longer than 255 bytes", kRemedy);
  } else if (name.size() > kComfortableName) {
    findings.Warn("with a long cache folder the path may grow beyond 259 characters", kRemedy);
  }
}

std::string Shown(const std::string& name) {
  return '"' + (name.size() <= kComfortableName ? name : name.substr(0, 40) + "...") + '"';
}

}  // namespace

Check CheckPackageName(const std::string& address) {
  const std::string name = korvixsdk::PackageFileName(address);
  Findings findings;
  CheckCharacters(name, findings);
  CheckWhole(name, findings);
  Check check = findings.As("package.name", "a plain name");
  check.reason = Shown(name) + ": " + check.reason;
  return check;
}

}  // namespace doctor
