// A desktop application that updates itself: what a host with windows does with the library.
//
// update_worker.h is the part to take over first. main_window.cpp and update_dialog.cpp use it,
// explanations.cpp has the sentences that users read, and the rest draws windows.

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <optional>
#include <string>

#include "main_window.h"
#include "options.h"

namespace {

constexpr int kWrongUsage = 64;
constexpr int kNoWindow = 70;

int RunMessageLoop(const desktop_host::MainWindow& main_window) {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(main_window.window(), &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  const INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                         ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&controls);

  std::wstring problem;
  const std::optional<desktop_host::Options> options = desktop_host::ReadOptions(&problem);
  if (!options) {
    MessageBoxW(nullptr, problem.c_str(), L"desktop_host", MB_ICONERROR | MB_OK);
    return kWrongUsage;
  }
  desktop_host::MainWindow main_window(*options);
  if (!main_window.Open()) return kNoWindow;
  return RunMessageLoop(main_window);
}
