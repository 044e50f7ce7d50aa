#include "options.h"

#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <vector>

#include "text.h"

namespace desktop_host {
namespace {

using Settings = std::map<std::wstring, std::wstring>;

constexpr const wchar_t* kNames[] = {L"name",    L"product",     L"version",
                                     L"server",  L"cache",       L"fallback-id",
                                     L"updater", L"package-url", L"packages-from"};

std::wstring ProgramPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(2 * path.size());
  }
}

/// Works with the mock server out of the box.
Settings Defaults(const std::filesystem::path& program_folder) {
  std::wstring local_data(32768, L'\0');
  local_data.resize(GetEnvironmentVariableW(L"LOCALAPPDATA", local_data.data(),
                                            static_cast<DWORD>(local_data.size())));
  const std::filesystem::path data =
      (local_data.empty() ? program_folder : std::filesystem::path(local_data)) / L"Editor";
  return {{L"name", L"Editor"},
          {L"product", L"editor"},
          {L"version", L"1.4.0"},
          {L"server", L"mock://demo"},
          {L"cache", (data / L"cache").wstring()},
          {L"fallback-id", (data / L"device-id").wstring()},
          {L"updater", (program_folder / L"updater.exe").wstring()},
          {L"package-url", L""},
          {L"packages-from", L""}};
}

void ReadFile(const std::wstring& ini_path, Settings& settings) {
  for (auto& [name, value] : settings) {
    std::array<wchar_t, 2048> text{};
    GetPrivateProfileStringW(L"desktop_host", name.c_str(), value.c_str(), text.data(),
                             static_cast<DWORD>(text.size()), ini_path.c_str());
    value = text.data();
  }
}

std::vector<std::wstring> Arguments() {
  int count = 0;
  LPWSTR* const texts = CommandLineToArgvW(GetCommandLineW(), &count);
  if (texts == nullptr) return {};
  std::vector<std::wstring> arguments(texts + std::min(count, 1), texts + count);
  LocalFree(texts);
  return arguments;
}

/// What is wrong with the arguments; empty when nothing is.
std::wstring ReadArguments(const std::vector<std::wstring>& arguments, Settings& settings) {
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    const std::wstring& argument = arguments[i];
    const auto setting = settings.find(argument.substr(std::min<std::size_t>(argument.size(), 2)));
    if (argument.compare(0, 2, L"--") != 0 || setting == settings.end()) {
      std::wstring problem = L"Unknown option: " + argument + L"\n\nOptions:";
      for (const wchar_t* const name : kNames) problem += std::wstring(L"\n--") + name + L" TEXT";
      return problem;
    }
    if (i + 1 == arguments.size()) return argument + L" needs a value.";
    setting->second = arguments[i + 1];
  }
  return {};
}

}  // namespace

std::optional<Options> ReadOptions(std::wstring* problem) {
  const std::filesystem::path program = ProgramPath();
  Settings settings = Defaults(program.parent_path());
  ReadFile(std::filesystem::path(program).replace_extension(L".ini").wstring(), settings);
  *problem = ReadArguments(Arguments(), settings);
  if (!problem->empty()) return std::nullopt;

  Options options;
  options.product_name = Utf8(settings[L"name"]);
  options.config.product_id = Utf8(settings[L"product"]);
  options.config.version = Utf8(settings[L"version"]);
  options.config.server_base_url = Utf8(settings[L"server"]);
  options.config.cache_dir = NarrowPath(settings[L"cache"]);
  options.config.fallback_device_id_path = Utf8(settings[L"fallback-id"]);
  options.updater_path = NarrowPath(settings[L"updater"]);
  options.package_url = Utf8(settings[L"package-url"]);
  options.packages_from = Utf8(settings[L"packages-from"]);
  // The canned offer of the mock server names a package that nobody can download; the library
  // answers this address by itself, with the bytes that the offer's digest belongs to.
  if (options.package_url.empty() && options.config.server_base_url.rfind("mock://", 0) == 0) {
    options.package_url = "mock://package-ok";
  }
  return options;
}

}  // namespace desktop_host
