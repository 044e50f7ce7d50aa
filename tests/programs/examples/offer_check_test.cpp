#include "offer_check/offer_check.h"

#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/host_config.h"
#include "support/temp_folder.h"

namespace offer_check {
namespace {

using namespace std::string_literals;

/// That of the package which the library makes up for "mock://" addresses.
constexpr char kDigest[] = "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16";
constexpr char kMockPackage[] = "mock update package payload";

constexpr char kNoPackage[] = "The offer names no package";
constexpr char kAddress[] = "The package's address holds a character that belongs in no address";
constexpr char kNoScheme[] = "The package's address has no scheme";
constexpr char kScheme[] = "The scheme of the package's address is not allowed";
constexpr char kNoHost[] = "The package's address names no host";
constexpr char kUser[] = "The package's address names a user";
constexpr char kHost[] = "The host of the package's address is not allowed";
constexpr char kCharacter[] = "The package's name holds more than letters, digits and . - _ +";
constexpr char kDot[] = "The package's name ends in a dot";
constexpr char kDevice[] = "The package's name is that of a device on Windows";
constexpr char kLong[] = "The package's name is longer than 120 characters";
constexpr char kSha256[] = "The package's SHA-256 is not 64 lowercase hexadecimal digits";

korvixsdk::UpdateInfo Offer(const std::string& address, const std::string& sha256 = kDigest) {
  korvixsdk::UpdateInfo offer;
  offer.download_url = address;
  offer.sha256 = sha256;
  return offer;
}

const std::vector<std::string> kTrusted = {
    "https://updates.example.com", "https://Downloads.Example.com:8443/packages/x?y=z",
    "http://127.0.0.1:8080",       "https://[2001:db8::1]",
    "mock://package-ok",
};

void ExpectRefusal(const std::string& address, const std::string& message) {
  const korvixsdk::Error refused = CheckOffer(Offer(address), kTrusted);
  EXPECT_EQ(refused.code, message.empty() ? korvixsdk::kOk : kOfferRefused) << address;
  EXPECT_EQ(refused.message, message) << address;
}

struct Case {
  /// Behind the slash that ends the origin.
  std::string tail;
  /// What is wrong; empty for nothing.
  std::string message;
  /// The name of the file when nothing is wrong.
  std::string name;
};

const std::vector<Case>& Names() {
  static const std::vector<Case> names = {
      {"editor-2.0.0.pkg", "", "editor-2.0.0.pkg"},
      {"Editor_Setup.EXE", "", "Editor_Setup.EXE"},
      {"a", "", "a"},
      {"0", "", "0"},
      {".pkg", "", ".pkg"},
      {"-", "", "-"},
      {"..a", "", "..a"},
      {"editor-1.0+build.5.pkg", "", "editor-1.0+build.5.pkg"},
      {"packages/editor.pkg", "", "editor.pkg"},
      {"packages/../editor.pkg", "", "editor.pkg"},
      {"my%20folder/editor.pkg", "", "editor.pkg"},
      {"CON/editor.pkg", "", "editor.pkg"},
      {"a:b/editor.pkg", "", "editor.pkg"},
      {"editor.pkg?token=a%2Fb", "", "editor.pkg"},
      {"editor.pkg?a:b", "", "editor.pkg"},
      {"editor.pkg?a=1?b=2", "", "editor.pkg"},
      {"NUL?file=x/editor.pkg", "", "editor.pkg"},
      {"dl?f=a/b.bin", "", "b.bin"},
      {"dl?f=a/b.bin?c=d", "", "b.bin"},
      {"#part/editor.pkg", "", "editor.pkg"},
      {"", "", "update_package.bin"},
      {"packages/", "", "update_package.bin"},
      {"?file=editor.pkg", "", "update_package.bin"},
      {"NUL/", "", "update_package.bin"},
      // Almost devices.
      {"CONSOLE", "", "CONSOLE"},
      {"con-1.pkg", "", "con-1.pkg"},
      {"COM", "", "COM"},
      {"COM.1", "", "COM.1"},
      {"COM10", "", "COM10"},
      {"COMX.pkg", "", "COMX.pkg"},
      {"lpt-1", "", "lpt-1"},
      {"LPT1a", "", "LPT1a"},
      {"NULL.pkg", "", "NULL.pkg"},
      {"x.NUL", "", "x.NUL"},
      {".con", "", ".con"},
      {"_aux", "", "_aux"},
      {std::string(120, 'n'), "", std::string(120, 'n')},
      {std::string(121, 'n'), kLong, ""},
      {std::string(5000, 'n') + ".pkg", kLong, ""},
      {"CON", kDevice, ""},
      {"con", kDevice, ""},
      {"Prn", kDevice, ""},
      {"AUX", kDevice, ""},
      {"NUL", kDevice, ""},
      {"nul.pkg", kDevice, ""},
      {"NuL.tar.gz", kDevice, ""},
      {"NUL..pkg", kDevice, ""},
      {"packages/nul", kDevice, ""},
      {"NUL?a=b", kDevice, ""},
      {"editor.pkg?file=x/NUL", kDevice, ""},
      {"COM0", kDevice, ""},
      {"COM1", kDevice, ""},
      {"com7", kDevice, ""},
      {"COM7.pkg", kDevice, ""},
      {"cOm9.a.b", kDevice, ""},
      {"LPT0.txt", kDevice, ""},
      {"LPT1", kDevice, ""},
      {"lpt9.zip", kDevice, ""},
      {"CONIN$", kCharacter, ""},
      {"CONOUT$.pkg", kCharacter, ""},
      {"CLOCK$", kCharacter, ""},
      {".", kDot, ""},
      {"..", kDot, ""},
      {"...", kDot, ""},
      {"editor.pkg.", kDot, ""},
      {"editor.pkg..?a=b", kDot, ""},
      {"NUL.", kDot, ""},
      {"a.exe:stream", kCharacter, ""},
      {"c:low.txt", kCharacter, ""},
      {"editor.pkg::$DATA", kCharacter, ""},
      {"editor%2Epkg", kCharacter, ""},
      {"..%2F..%2Fout.txt", kCharacter, ""},
      {"%USERNAME%.pkg", kCharacter, ""},
      {"editor.pkg#part", kCharacter, ""},
      {"editor.pkg&calc", kCharacter, ""},
      {"editor.pkg|calc", kCharacter, ""},
      {"editor.pkg>out", kCharacter, ""},
      {"<editor.pkg", kCharacter, ""},
      {"\"editor.pkg", kCharacter, ""},
      {"'editor.pkg", kCharacter, ""},
      {"editor*.pkg", kCharacter, ""},
      {"EDITOR~1.PKG", kCharacter, ""},
      {"editor^.pkg", kCharacter, ""},
      {"!editor!.pkg", kCharacter, ""},
      {"$(id).pkg", kCharacter, ""},
      {"`id`.pkg", kCharacter, ""},
      {"editor;a.pkg", kCharacter, ""},
      {"editor,a.pkg", kCharacter, ""},
      {"a=b", kCharacter, ""},
      {"a@b", kCharacter, ""},
      {"[a]", kCharacter, ""},
      {"{a}", kCharacter, ""},
      {"..\\..\\out.txt", kAddress, ""},
      {"\\\\server\\share\\out.txt", kAddress, ""},
      {"c:\\out.txt", kAddress, ""},
      {"packages\\x/editor.pkg", kAddress, ""},
      {"editor.pkg ", kAddress, ""},
      {" editor.pkg", kAddress, ""},
      {"my editor.pkg", kAddress, ""},
      {"NUL ", kAddress, ""},
      {"COM1 .pkg", kAddress, ""},
      {"editor.pkg\n", kAddress, ""},
      {"editor\r.pkg", kAddress, ""},
      {"editor\t.pkg", kAddress, ""},
      {"editor.pkg\0.exe"s, kAddress, ""},
      {"editor\x1b.pkg", kAddress, ""},
      {"editor\x7f.pkg", kAddress, ""},
      {"gr\xc3\xb6\xc3\x9f"
       "e.pkg",
       kAddress, ""},
      {"COM\xc2\xb9", kAddress, ""},
      {"lpt\xb2.pkg", kAddress, ""},
      {"a\xe2\x88\x95"
       "b.pkg",
       kAddress, ""},
      {"\xff\xfe", kAddress, ""},
  };
  return names;
}

TEST(OfferCheck, RefusesNamesThatAreNoPlainFileNames) {
  ASSERT_GE(Names().size(), 60u);
  for (const Case& one : Names()) {
    ExpectRefusal("https://updates.example.com/" + one.tail, one.message);
    ExpectRefusal("mock://package-ok/" + one.tail, one.message);
  }
}

TEST(OfferCheck, TakesTheHostForTheNameWhereNoSlashFollows) {
  ExpectRefusal("mock://package-ok", "");
  EXPECT_EQ(PackageName("mock://package-ok"), "package-ok");
  ExpectRefusal("https://updates.example.com", "");
  EXPECT_EQ(PackageName("https://updates.example.com"), "updates.example.com");
  // With the port it is a name with a colon.
  ExpectRefusal("http://127.0.0.1:8080", kCharacter);
  EXPECT_EQ(CheckOffer(Offer("https://nul"), {"https://nul"}).message, kDevice);
}

TEST(OfferCheck, RefusesOtherSchemes) {
  ExpectRefusal("https://updates.example.com/x.pkg", "");
  ExpectRefusal("", kNoPackage);
  for (const std::string address : {"x.pkg", "/x.pkg", "//updates.example.com/x.pkg",
                                    "://updates.example.com/x.pkg", "https:/updates.example.com/x",
                                    "https:updates.example.com/x.pkg", "updates.example.com/x"}) {
    ExpectRefusal(address, kNoScheme);
  }
  for (const std::string scheme : {"ftp", "file", "HTTPS", "https:", "xhttps", "httpss", "MOCK",
                                   "javascript", "x/https", "https:https"}) {
    ExpectRefusal(scheme + "://updates.example.com/x.pkg", kScheme);
  }
  ExpectRefusal(" https://updates.example.com/x.pkg", kAddress);
  ExpectRefusal("\thttps://updates.example.com/x.pkg", kAddress);
}

TEST(OfferCheck, AllowsEachSchemeToItsOwnHostsAlone) {
  ExpectRefusal("http://127.0.0.1:8080/x.pkg", "");
  ExpectRefusal("https://127.0.0.1:8080/x.pkg", kHost);
  ExpectRefusal("http://updates.example.com/x.pkg", kHost);
  ExpectRefusal("mock://package-alt", kHost);
  ExpectRefusal("mock://updates.example.com/x.pkg", kHost);
  EXPECT_EQ(CheckOffer(Offer("mock://package-ok"), {"https://updates.example.com"}).message,
            kScheme);
  EXPECT_EQ(CheckOffer(Offer("https://updates.example.com/x.pkg"), {}).message, kScheme);
}

TEST(OfferCheck, ComparesTheHostWithoutRegardToCapitals) {
  ExpectRefusal("https://UPDATES.example.COM/x.pkg", "");
  ExpectRefusal("https://downloads.example.com:8443/x.pkg", "");
  ExpectRefusal("https://[2001:DB8::1]/x.pkg", "");
}

TEST(OfferCheck, RefusesOtherHosts) {
  for (const std::string host :
       {"evil.example", "updates.example.com.evil.example", "evil-updates.example.com",
        "updates.example.com.", "updates.example.co", "updates.example.com:443",
        "updates.example.com:8443", "updates.example.com:", "downloads.example.com",
        "downloads.example.com:84433", "updates.example.com%2eevil.example",
        "updates.example.com;evil.example", "updates%2Eexample.com", "[::1]", "[2001:db8::1]:1",
        "[2001:db8::1", "2001:db8::1", "127.0.0.1", "%"}) {
    ExpectRefusal("https://" + host + "/x.pkg", kHost);
  }
  ExpectRefusal("http://127.0.0.1:80801/x.pkg", kHost);
  ExpectRefusal("http://127.0.0.1/x.pkg", kHost);
}

TEST(OfferCheck, RefusesAuthoritiesThatMisleadAReader) {
  ExpectRefusal("https://updates.example.com@evil.example/x.pkg", kUser);
  ExpectRefusal("https://updates.example.com:pw@evil.example/x.pkg", kUser);
  ExpectRefusal("https://evil.example@updates.example.com/x.pkg", kUser);
  ExpectRefusal("https://@updates.example.com/x.pkg", kUser);
  ExpectRefusal("https://updates.example.com\\@evil.example/x.pkg", kAddress);
  ExpectRefusal("https://evil.example\\.updates.example.com/x.pkg", kAddress);
  ExpectRefusal("https://updates.example.com\n.evil.example/x.pkg", kAddress);
  ExpectRefusal("https://updates.example.com\0.evil.example/x.pkg"s, kAddress);
  ExpectRefusal("https://evil.example?@updates.example.com/x.pkg", kHost);
  ExpectRefusal("https://evil.example#@updates.example.com/x.pkg", kHost);
  ExpectRefusal("https://evil.example#https://updates.example.com/x.pkg", kHost);
}

TEST(OfferCheck, RefusesAddressesWithoutAHost) {
  for (const std::string address : {"https://", "https:///x.pkg", "https:///updates.example.com/x",
                                    "https://?x.pkg", "https://#x.pkg", "mock:///x.pkg"}) {
    ExpectRefusal(address, kNoHost);
  }
  // Nothing in the list makes one: not even an entry that has none itself.
  EXPECT_EQ(CheckOffer(Offer("file:///etc/passwd"), {"file:///"}).message, kNoHost);
  EXPECT_EQ(CheckOffer(Offer("x.pkg"), {""}).message, kNoScheme);
}

TEST(OfferCheck, RefusesWhatIsNoDigest) {
  const std::string digest = kDigest;
  std::string capitals = digest;
  std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                 [](char c) { return c >= 'a' && c <= 'f' ? static_cast<char>(c - 32) : c; });
  for (const std::string& sha256 :
       {""s, capitals, digest.substr(1), digest + "0", digest + "\n", " " + digest.substr(1),
        "g" + digest.substr(1), "`" + digest.substr(1), "/" + digest.substr(1),
        ":" + digest.substr(1), "\0"s + digest.substr(1), "\xc3" + digest.substr(1),
        "sha256:" + digest}) {
    const korvixsdk::Error refused =
        CheckOffer(Offer("https://updates.example.com/x.pkg", sha256), kTrusted);
    EXPECT_EQ(refused.code, kOfferRefused) << sha256;
    EXPECT_EQ(refused.message, kSha256) << sha256;
  }
}

TEST(OfferCheck, EndsForAnAddressOfManyMegabytes) {
  ExpectRefusal("https://updates.example.com/" + std::string(9000000, 'x'), kLong);
  ExpectRefusal(std::string(9000000, '/'), kNoScheme);
}

/// A host whose packages come from the library's mock mode.
class MockPackages : public testing::Test {
 protected:
  void SetUp() override {
    korvixsdk::SDKConfig config = korvixsdk::test::LeastConfig(cache_.string());
    config.server_base_url = "mock://service";
    ASSERT_TRUE(sdk_.Init(config).ok());
  }

  /// The library made a file of this name and no other, in the packages' folder and nowhere else.
  void ExpectPackage(const std::string& address, const std::string& name) {
    SCOPED_TRACE(address);
    const korvixsdk::Result<korvixsdk::PreparedUpdate> prepared =
        sdk_.PrepareUpdate(Offer(address));
    EXPECT_EQ(prepared.error.message, "");
    const std::filesystem::path path = cache_ / "updates" / name;
    EXPECT_EQ(prepared.value.package_path, path.string());
    EXPECT_EQ(Entries(),
              (std::vector<std::string>{"cache", "cache/updates", "cache/updates/" + name}));
    EXPECT_EQ(korvixsdk::test::FileBytes(path), kMockPackage);
    std::filesystem::remove(path);
  }

  /// All there is in the folder, the host's working directory, by the names that its listing has.
  std::vector<std::string> Entries() const {
    std::vector<std::string> entries;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
      entries.push_back(entry.path().lexically_relative(folder_.path()).generic_string());
    }
    std::sort(entries.begin(), entries.end());
    return entries;
  }

  const korvixsdk::test::TempFolder folder_;
  const std::filesystem::path cache_ = folder_.path() / "cache";
  korvixsdk::KorvixSDK sdk_;
};

TEST_F(MockPackages, LieWhereTheCheckSaysForEveryNameItTakes) {
  int accepted = 0;
  for (const Case& one : Names()) {
    if (!one.message.empty()) continue;
    ++accepted;
    EXPECT_EQ(PackageName("https://updates.example.com/" + one.tail), one.name);
    ExpectPackage("mock://package-ok/" + one.tail, one.name);
  }
  EXPECT_GE(accepted, 30);
}

TEST_F(MockPackages, LieWhereTheCheckSaysForEveryShortTextItTakes) {
  const std::vector<std::string> pieces = {"nul", "CON", "com1", "+", ".", "/",
                                           "?",   "\\",  ":",    " ", "%", "a"};
  std::vector<std::string> tails = {""};
  std::size_t begin = 0;
  for (int length = 0; length < 3; ++length) {
    const std::size_t end = tails.size();
    for (; begin < end; ++begin) {
      for (const std::string& piece : pieces) tails.push_back(tails[begin] + piece);
    }
  }
  int accepted = 0;
  for (const std::string& tail : tails) {
    const std::string address = "mock://package-ok/" + tail;
    if (!CheckOffer(Offer(address), {"mock://package-ok"}).ok()) continue;
    ++accepted;
    ExpectPackage(address, PackageName(address));
  }
  EXPECT_EQ(tails.size(), 1u + 12 + 144 + 1728);
  EXPECT_GE(accepted, 500);
}

}  // namespace
}  // namespace offer_check
