#ifndef KORVIXSDK_TESTS_SUPPORT_MOCK_PACKAGE_H_
#define KORVIXSDK_TESTS_SUPPORT_MOCK_PACKAGE_H_

namespace korvixsdk::test {

/// What the mock server sends as a package, spelled out once more than in the library.
constexpr char kMockPackage[] = "mock update package payload";
constexpr char kMockPackageDigest[] =
    "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16";

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_MOCK_PACKAGE_H_
