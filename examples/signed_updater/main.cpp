// An updater that installs nothing but what the vendor has signed.
//
// Its only argument is the package; the signature lies beside it as PACKAGE.sig. After the check it
// copies the package to the file that the environment variable SIGNED_UPDATER_TARGET names, or to
// PACKAGE.installed: the stand-in for an installation. A build without a key in it takes the key
// from the file that SIGNED_UPDATER_KEY_FILE names.
//
// Exit status: 0, 64 for wrong usage, 20 to 22 for a key or signature that will not do, or the
// library's error code.

#include <korvixsdk/korvixsdk.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "package_signature.h"

namespace {

using korvixsdk::Error;
using korvixsdk::Result;
using korvixsdk::ServiceRegistry;
using signed_updater::PublicKey;

constexpr int kWrongUsage = 64;
constexpr char kBuiltInKey[] = SIGNED_UPDATER_KEY;

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

Result<PublicKey> TrustedKey(korvixsdk::IFileSystemProvider& files) {
  // Once a key is built in, nobody can bring another one.
  if (sizeof(kBuiltInKey) > 1) {
    return signed_updater::ReadPublicKey(signed_updater::BytesFromHex(kBuiltInKey));
  }
  const std::string path = Environment("SIGNED_UPDATER_KEY_FILE");
  if (path.empty()) {
    return {{}, {signed_updater::kKeyNotUsable, "No public key: SIGNED_UPDATER_KEY_FILE is empty"}};
  }
  const Result<std::string> der = files.ReadFile(path);
  if (!der.ok()) return {{}, der.error};
  return signed_updater::ReadPublicKey(der.value);
}

Error Install(const std::string& package_path, ServiceRegistry& services) {
  const Result<PublicKey> key = TrustedKey(*services.file_system);
  if (!key.ok()) return key.error;
  const std::string signature_path = package_path + ".sig";
  if (!services.file_system->Exists(signature_path)) {
    return {signed_updater::kSignatureMissing, "The package has no signature: " + signature_path};
  }
  const Result<std::string> signature = services.file_system->ReadFile(signature_path);
  if (!signature.ok()) return signature.error;
  // Read once, verified and installed from memory: the file may be another one a moment later.
  const Result<std::string> package = services.file_system->ReadFile(package_path);
  if (!package.ok()) return package.error;
  Error error =
      signed_updater::VerifyPackage(package.value, signature.value, key.value, *services.crypto);
  if (!error.ok()) return error;

  std::string target = Environment("SIGNED_UPDATER_TARGET");
  if (target.empty()) target = package_path + ".installed";
  error = services.file_system->WriteFile(target, package.value);
  if (error.ok()) {
    std::cout << "signed_updater: installed " << package.value.size() << " bytes as " << target
              << std::endl;
  }
  return error;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: signed_updater PACKAGE\n";
    return kWrongUsage;
  }
  const std::shared_ptr<ServiceRegistry> services = korvixsdk::SdkFactory::CreateDefaultServices();
  const Error error = Install(argv[1], *services);
  if (!error.ok()) {
    std::cerr << "signed_updater: refused with code " << error.code << ": " << error.message
              << std::endl;
  }
  return error.code;
}
