#include <windows.h>
#include <winhttp.h>

#include "doctor/system.h"

namespace doctor {
namespace {

constexpr char kInternetSettings[] =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
constexpr char kWindowsVersion[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

/// Empty when there is none.
std::string RegistryText(HKEY root, const char* key, const char* name) {
  char text[2048] = {};
  DWORD size = sizeof(text) - 1;
  if (RegGetValueA(root, key, name, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS) {
    return {};
  }
  return text;
}

bool RegistryFlag(HKEY root, const char* key, const char* name) {
  DWORD value = 0;
  DWORD size = sizeof(value);
  return RegGetValueA(root, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size) == ERROR_SUCCESS &&
         value != 0;
}

std::string Narrow(const wchar_t* text) {
  char narrow[2048] = {};
  WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow, sizeof(narrow) - 1, nullptr, nullptr);
  return narrow;
}

/// That of services, which `netsh winhttp set proxy` sets.
std::string WinHttpProxy() {
  WINHTTP_PROXY_INFO info = {};
  if (!WinHttpGetDefaultProxyConfiguration(&info)) return {};
  std::string proxy;
  if (info.dwAccessType == WINHTTP_ACCESS_TYPE_NAMED_PROXY && info.lpszProxy != nullptr) {
    proxy = Narrow(info.lpszProxy);
  }
  GlobalFree(info.lpszProxy);
  GlobalFree(info.lpszProxyBypass);
  return proxy;
}

}  // namespace

std::string OperatingSystem() {
  const auto text = [](const char* name) {
    return RegistryText(HKEY_LOCAL_MACHINE, kWindowsVersion, name);
  };
  const std::string release = text("DisplayVersion");
  return "Windows " + (release.empty() ? "" : release + ", ") + "build " + text("CurrentBuild");
}

std::vector<std::string> SystemProxies() {
  std::vector<std::string> proxies;
  const auto add = [&proxies](const std::string& proxy, const char* setting) {
    if (!proxy.empty()) proxies.push_back(proxy + " (" + setting + ")");
  };
  if (RegistryFlag(HKEY_CURRENT_USER, kInternetSettings, "ProxyEnable")) {
    add(RegistryText(HKEY_CURRENT_USER, kInternetSettings, "ProxyServer"), "Internet settings");
  }
  add(RegistryText(HKEY_CURRENT_USER, kInternetSettings, "AutoConfigURL"), "setup script");
  add(WinHttpProxy(), "WinHTTP");
  return proxies;
}

}  // namespace doctor
