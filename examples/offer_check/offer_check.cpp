#include "offer_check.h"

#include <algorithm>
#include <string_view>

namespace offer_check {
namespace {

constexpr std::string_view kDigits = "0123456789";

/// Those of ASCII, whatever the locale is.
char Lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

bool EqualWithoutCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

bool Contains(std::string_view text, char character) {
  return text.find(character) != std::string_view::npos;
}

struct Origin {
  std::string_view scheme;
  /// Host and port, and whatever else stands before the path.
  std::string_view authority;
};

Origin OriginOf(std::string_view address) {
  const std::size_t scheme_end = address.find("://");
  if (scheme_end == std::string_view::npos) return {};
  const std::string_view rest = address.substr(scheme_end + 3);
  return {address.substr(0, scheme_end), rest.substr(0, rest.find_first_of("/?#"))};
}

/// Whitespace, line ends, a backslash and the like: what one reader of the address skips, another
/// takes for a separator.
bool IsForAddresses(char character) {
  return character > 0x20 && character < 0x7f && character != '\\';
}

/// Of these none has a meaning to Windows, to a shell or to a batch file. The percent sign is not
/// among them: the library decodes nothing, so that "a%20b" would be a name with a percent sign.
bool IsForNames(char character) {
  const char lower = Lower(character);
  return (lower >= 'a' && lower <= 'z') || Contains(kDigits, character) ||
         Contains(".-_+", character);
}

/// For Windows these are devices in every folder, with any extension: writing to one blocks, or
/// succeeds and leaves no file. Further ones hold a dollar sign or characters beyond ASCII.
bool IsDevice(std::string_view name) {
  const std::string_view stem = name.substr(0, name.find('.'));
  for (const std::string_view device : {"con", "prn", "aux", "nul"}) {
    if (EqualWithoutCase(stem, device)) return true;
  }
  const std::string_view family = stem.substr(0, 3);
  return stem.size() == 4 && Contains(kDigits, stem[3]) &&
         (EqualWithoutCase(family, "com") || EqualWithoutCase(family, "lpt"));
}

/// What is wrong, or nullptr.
const char* WrongOrigin(std::string_view address, const std::vector<std::string>& trusted) {
  const Origin origin = OriginOf(address);
  bool scheme_is_trusted = false;
  bool authority_is_trusted = false;
  for (const std::string& one : trusted) {
    const Origin candidate = OriginOf(one);
    if (candidate.scheme != origin.scheme) continue;
    scheme_is_trusted = true;
    if (EqualWithoutCase(candidate.authority, origin.authority)) authority_is_trusted = true;
  }
  if (origin.scheme.empty()) return "The package's address has no scheme";
  if (!scheme_is_trusted) return "The scheme of the package's address is not allowed";
  if (origin.authority.empty()) return "The package's address names no host";
  // In "https://updates.example.com@evil.example/" the host is evil.example.
  if (Contains(origin.authority, '@')) return "The package's address names a user";
  if (!authority_is_trusted) return "The host of the package's address is not allowed";
  return nullptr;
}

const char* WrongAddress(const std::string& address, const std::vector<std::string>& trusted) {
  if (address.empty()) return "The offer names no package";
  if (!std::all_of(address.begin(), address.end(), IsForAddresses)) {
    return "The package's address holds a character that belongs in no address";
  }
  return WrongOrigin(address, trusted);
}

const char* WrongName(const std::string& name) {
  if (!std::all_of(name.begin(), name.end(), IsForNames)) {
    return "The package's name holds more than letters, digits and . - _ +";
  }
  if (name.back() == '.') return "The package's name ends in a dot";
  if (IsDevice(name)) return "The package's name is that of a device on Windows";
  if (name.size() > kLongestName) return "The package's name is longer than 120 characters";
  return nullptr;
}

const char* WrongDigest(const std::string& sha256) {
  const auto is_digit = [](char c) { return Contains(kDigits, c) || (c >= 'a' && c <= 'f'); };
  if (sha256.size() == 64 && std::all_of(sha256.begin(), sha256.end(), is_digit)) return nullptr;
  // Without one nothing would be compared, and one in capitals never matches.
  return "The package's SHA-256 is not 64 lowercase hexadecimal digits";
}

}  // namespace

std::string PackageName(const std::string& address) {
  const std::size_t slash = address.rfind('/');
  std::string name;
  if (slash != std::string::npos) name = address.substr(slash + 1);
  name = name.substr(0, name.find('?'));
  return name.empty() ? "update_package.bin" : name;
}

korvixsdk::Error CheckOffer(const korvixsdk::UpdateInfo& offer,
                            const std::vector<std::string>& trusted) {
  const char* wrong = WrongAddress(offer.download_url, trusted);
  if (wrong == nullptr) wrong = WrongName(PackageName(offer.download_url));
  if (wrong == nullptr) wrong = WrongDigest(offer.sha256);
  if (wrong == nullptr) return {};
  return {kOfferRefused, wrong};
}

}  // namespace offer_check
