// Looks at another program's windows and tells what it sees: the eyes of
// tests/programs/desktop/run, whose hands are the X server's keyboard and mouse.
//
// One command a line on standard input, its fields separated by tabs, and one line of answer each:
// "ok", with a value behind a tab where there is one, or "no" with the reason. Windows are named by
// their title and controls by their number. What is waited for, is waited for a minute.
//
//   window TITLE              waits for a visible window
//   active TITLE              waits until the window has the keyboard
//   gone TITLE                waits until there is none
//   expect TITLE ID TEXT      waits until the control's text contains TEXT
//   text TITLE ID             the control's text, its line ends as " / "
//   write TITLE ID TEXT       puts TEXT into the control, for a picture
//   enabled|disabled|shown|hidden|focused TITLE ID   waits for that
//   where TITLE ID            the control's middle within its window: "X Y"
//   answers TITLE             whether the window handles messages within two seconds
//   scale TITLE DPI           tells the window that it has come to a monitor with this scaling
//   fits TITLE                whether every text has its room, and no control covers another
//
// With the argument "all" it prints every window with every control instead, for a look at what
// went wrong, and ends.

#include <windows.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "desktop_host/resource.h"

namespace {

using Fields = std::vector<std::string>;

struct Answer {
  bool good = false;
  std::string text{};
};

std::wstring Wide(const std::string& utf8) {
  std::wstring wide(utf8.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(),
                          static_cast<int>(wide.size()))));
  return wide;
}

std::string Utf8(const std::wstring& wide) {
  std::string utf8(4 * wide.size(), '\0');
  utf8.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(),
                          static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
}

bool WaitFor(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

HWND FindShown(const std::string& title) {
  const HWND window = FindWindowW(L"#32770", Wide(title).c_str());
  return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

/// Asked for by message, as GetWindowText does not reach into other programs' controls.
std::wstring Text(HWND control) {
  std::vector<wchar_t> text(32768);
  DWORD_PTR length = 0;
  SendMessageTimeoutW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                      SMTO_NORMAL, 5000, &length);
  return std::wstring(text.data(), static_cast<std::size_t>(length));
}

bool Write(HWND control, const std::string& text) {
  DWORD_PTR unused = 0;
  return SendMessageTimeoutW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()),
                             SMTO_NORMAL, 5000, &unused) != 0;
}

std::string OneLine(const std::wstring& text) {
  std::string line;
  for (const char character : Utf8(text)) {
    if (character == '\n') line += " / ";
    if (character != '\n' && character != '\r') line += character;
  }
  return line;
}

std::wstring ClassName(HWND control) {
  wchar_t name[64] = {};
  GetClassNameW(control, name, static_cast<int>(std::size(name)));
  return name;
}

/// What the windows of one thread share.
GUITHREADINFO ThreadOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info;
}

bool Responds(HWND window, UINT milliseconds) {
  DWORD_PTR unused = 0;
  return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, milliseconds, &unused) != 0;
}

/// Lets the program hear where the window manager has put its window: on its way to the screen a
/// window goes through other places and sizes. The first message may be answered before what the X
/// server has sent until now is handled, the second is not.
bool Settles(HWND window) { return Responds(window, 60000) && Responds(window, 60000); }

bool HasFocus(HWND control) {
  return ThreadOf(control).hwndFocus == control && GetForegroundWindow() == GetParent(control);
}

bool IsInState(HWND control, const std::string& state) {
  if (state == "enabled") return IsWindowEnabled(control);
  if (state == "disabled") return !IsWindowEnabled(control);
  if (state == "shown") return IsWindowVisible(control);
  if (state == "hidden") return !IsWindowVisible(control);
  return HasFocus(control);
}

/// The driver's eyes for room: the font that the system wants for messages, as the program's own
/// fonts cannot be had from here.
class Measure {
 public:
  explicit Measure(UINT dpi) : context_(CreateCompatibleDC(nullptr)) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dpi);
    font_ = CreateFontIndirectW(&metrics.lfMessageFont);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, 4, 3);
    heading_font_ = CreateFontIndirectW(&metrics.lfMessageFont);
  }
  ~Measure() {
    DeleteDC(context_);
    DeleteObject(font_);
    DeleteObject(heading_font_);
  }
  Measure(const Measure&) = delete;
  Measure& operator=(const Measure&) = delete;

  SIZE Of(HWND control, int width) const {
    SelectObject(context_, GetDlgCtrlID(control) == IDC_HEADING ? heading_font_ : font_);
    RECT area{0, 0, width, 0};
    DrawTextW(context_, Text(control).c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK);
    return {area.right, area.bottom};
  }
  LONG LineHeight() const {
    SelectObject(context_, font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(context_, &metrics);
    return metrics.tmHeight;
  }

 private:
  HDC context_;
  HFONT font_ = nullptr;
  HFONT heading_font_ = nullptr;
};

RECT Place(HWND control) {
  RECT place{};
  GetWindowRect(control, &place);
  return place;
}

std::vector<HWND> ShownControls(HWND window) {
  std::vector<HWND> controls;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    // One without a text may have no room at all.
    const RECT place = Place(child);
    const bool takes_room = !IsRectEmpty(&place) || !Text(child).empty();
    if (IsWindowVisible(child) && takes_room) controls.push_back(child);
  }
  return controls;
}

/// What is wrong with the room that a control has for its text.
std::string RoomProblem(HWND control, const Measure& measure, UINT dpi) {
  const RECT place = Place(control);
  const LONG width = place.right - place.left;
  const LONG height = place.bottom - place.top;
  const std::wstring kind = ClassName(control);
  if (kind == L"Edit") {
    return height < measure.LineHeight() + 4 ? "an edit control lower than its text" : "";
  }
  if (kind != L"Static" && kind != L"Button") return "";
  const int border = kind == L"Button" ? MulDiv(6, static_cast<int>(dpi), 96) : 0;
  const SIZE size = measure.Of(control, static_cast<int>(width) - 2 * border);
  const bool fits = size.cx <= width - 2 * border && size.cy <= height;
  return fits ? "" : "no room for: " + OneLine(Text(control));
}

Answer Fits(HWND window, UINT dpi) {
  RECT client{};
  GetClientRect(window, &client);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  const Measure measure(dpi);
  const std::vector<HWND> controls = ShownControls(window);
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const std::string number = std::to_string(GetDlgCtrlID(controls[i]));
    const RECT place = Place(controls[i]);
    RECT common{};
    if (!IntersectRect(&common, &place, &client) || !EqualRect(&common, &place)) {
      return {false, "outside the window: " + number};
    }
    for (std::size_t k = 0; k < i; ++k) {
      const RECT other = Place(controls[k]);
      if (IntersectRect(&common, &place, &other)) {
        return {false, number + " covers " + std::to_string(GetDlgCtrlID(controls[k]))};
      }
    }
    const std::string problem = RoomProblem(controls[i], measure, dpi);
    if (!problem.empty()) return {false, problem};
  }
  return {!controls.empty(), std::to_string(controls.size()) + " controls"};
}

/// The proposed place has to stand in the program's own memory.
Answer Scale(HWND window, UINT dpi) {
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  const HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, process_id);
  if (process == nullptr) return {false, "the process cannot be opened"};
  void* const there =
      VirtualAllocEx(process, nullptr, sizeof(RECT), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  const RECT place = Place(window);
  DWORD_PTR unused = 0;
  const bool sent =
      there != nullptr && WriteProcessMemory(process, there, &place, sizeof(place), nullptr) &&
      SendMessageTimeoutW(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                          reinterpret_cast<LPARAM>(there), SMTO_NORMAL, 60000, &unused) != 0;
  if (there != nullptr) VirtualFreeEx(process, there, 0, MEM_RELEASE);
  CloseHandle(process);
  return {sent, ""};
}

class Driver {
 public:
  Answer Obey(const Fields& fields) {
    if (fields.size() < 2) return {false, "a command needs a title"};
    const std::string& command = fields[0];
    const std::string& title = fields[1];
    if (command == "gone") return {WaitFor([&] { return FindShown(title) == nullptr; }), ""};
    if (!WaitFor([&] { return FindShown(title) != nullptr; })) {
      return {false, "no window " + title};
    }
    const HWND window = FindShown(title);
    if (command == "window") return {true, ""};
    if (command == "active") {
      return {WaitFor([&] { return GetForegroundWindow() == window; }), ""};
    }
    if (command == "answers") return {Responds(window, 2000), ""};
    if (command == "fits") {
      return Settles(window) ? Fits(window, Dpi(window)) : Answer{false, "no response"};
    }
    if (fields.size() < 3) return {false, "not understood: " + command};
    const int number = std::atoi(fields[2].c_str());
    if (command == "scale") {
      scaled_[window] = static_cast<UINT>(number);
      return Scale(window, static_cast<UINT>(number));
    }
    return LookAt(fields, GetDlgItem(window, number));
  }

 private:
  UINT Dpi(HWND window) const {
    const auto scaled = scaled_.find(window);
    return scaled != scaled_.end() ? scaled->second : GetDpiForWindow(window);
  }

  static Answer LookAt(const Fields& fields, HWND control) {
    const std::string& command = fields[0];
    if (control == nullptr) return {false, "no control " + fields[2]};
    if (command == "text") return {true, OneLine(Text(control))};
    if (command == "where") {
      // Not by way of the screen: the window may be moving.
      RECT place{};
      GetClientRect(control, &place);
      MapWindowPoints(control, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
      std::ostringstream middle;
      middle << (place.left + place.right) / 2 << " " << (place.top + place.bottom) / 2;
      return {true, middle.str()};
    }
    if (command == "write" && fields.size() == 4) {
      return {Write(control, fields[3]), OneLine(Text(control))};
    }
    if (command == "expect" && fields.size() == 4) {
      const bool came =
          WaitFor([&] { return OneLine(Text(control)).find(fields[3]) != std::string::npos; });
      return {came, OneLine(Text(control))};
    }
    return {WaitFor([&] { return IsInState(control, command); }), command};
  }

  std::map<HWND, UINT> scaled_;
};

/// Without a text where the program would have to be waited for.
void Print(HWND window, const GUITHREADINFO& thread, bool responds) {
  const RECT place = Place(window);
  std::cout << Utf8(ClassName(window)) << " '" << (responds ? OneLine(Text(window)) : "?") << "' "
            << place.left << "," << place.top << " to " << place.right << "," << place.bottom
            << (IsWindowVisible(window) ? "" : " hidden")
            << (IsWindowEnabled(window) ? "" : " disabled")
            << (window == GetForegroundWindow() ? " foreground" : "")
            << (window == thread.hwndFocus ? " focused" : "")
            << (window == thread.hwndCapture ? " has the mouse" : "")
            << (responds ? "" : " does not respond") << std::endl;
}

BOOL CALLBACK PrintControl(HWND control, LPARAM responds) {
  std::cout << "  " << GetDlgCtrlID(control) << " ";
  Print(control, ThreadOf(control), responds != 0);
  return TRUE;
}

/// Wine's own helpers are hidden and have nothing in them.
BOOL CALLBACK PrintWithControls(HWND window, LPARAM) {
  if (!IsWindowVisible(window) && GetWindow(window, GW_CHILD) == nullptr) return TRUE;
  const bool responds = Responds(window, 2000);
  DWORD process = 0;
  const DWORD thread = GetWindowThreadProcessId(window, &process);
  std::cout << "process " << process << ", thread " << thread << ": ";
  Print(window, ThreadOf(window), responds);
  EnumChildWindows(window, PrintControl, responds ? 1 : 0);
  return TRUE;
}

Fields Split(std::string line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
  Fields fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, '\t');) fields.push_back(field);
  return fields;
}

}  // namespace

int main(int argc, char** argv) {
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  if (argc == 2 && std::string(argv[1]) == "all") return EnumWindows(PrintWithControls, 0) ? 0 : 1;
  Driver driver;
  for (std::string line; std::getline(std::cin, line);) {
    const Answer answer = driver.Obey(Split(line));
    std::cout << (answer.good ? "ok" : "no") << "\t" << answer.text << std::endl;
  }
  return 0;
}
