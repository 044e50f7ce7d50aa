#include "form.h"

#include <algorithm>

// After windows.h.
#include <commctrl.h>

#include "resource.h"

namespace desktop_host {
namespace {

HINSTANCE Instance() { return GetModuleHandleW(nullptr); }

/// Windows would scale the controls' places too when a dialog reaches another monitor. Looked up,
/// as not every system that is new enough otherwise has it.
void KeepSystemFromScaling(HWND window) {
  using Function = BOOL(WINAPI*)(HWND, DIALOG_DPI_CHANGE_BEHAVIORS, DIALOG_DPI_CHANGE_BEHAVIORS);
  void* const found = reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior"));
  if (found != nullptr) reinterpret_cast<Function>(found)(window, DDC_DISABLE_ALL, DDC_DISABLE_ALL);
}

RECT WorkArea(HWND window) {
  MONITORINFO info{};
  info.cbSize = sizeof(info);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

HICON LoadApplicationIcon(int size) {
  return static_cast<HICON>(LoadImageW(Instance(), MAKEINTRESOURCEW(IDI_APPLICATION_ICON),
                                       IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
}

}  // namespace

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool HasVisibleStyle(HWND control) {
  return (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool Form::Create(int resource) {
  return CreateDialogParamW(Instance(), MAKEINTRESOURCEW(resource), nullptr, Procedure,
                            reinterpret_cast<LPARAM>(this)) != nullptr;
}

INT_PTR Form::RunModal(int resource, HWND owner) {
  return DialogBoxParamW(Instance(), MAKEINTRESOURCEW(resource), owner, Procedure,
                         reinterpret_cast<LPARAM>(this));
}

void Form::SetText(int id, const std::wstring& text) {
  // Screen readers take a text that is set as news, so only what is new is set.
  if (WindowText(Control(id)) != text) SetWindowTextW(Control(id), text.c_str());
}

void Form::Show(int id, bool shown) { ShowWindow(Control(id), shown ? SW_SHOWNA : SW_HIDE); }

bool Form::IsShown(int id) const { return HasVisibleStyle(Control(id)); }

void Form::Arrange() {
  Column column(window_, dpi_, Width());
  PlaceControls(column);
  RECT frame{0, 0, column.Size().cx, column.Size().cy};
  AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE)), FALSE,
                           static_cast<DWORD>(GetWindowLongW(window_, GWL_EXSTYLE)), dpi_);
  RECT now{};
  GetWindowRect(window_, &now);
  // A window that grows stays on the screen.
  const LONG height = frame.bottom - frame.top;
  const RECT area = WorkArea(window_);
  const LONG top = std::max(area.top, std::min(now.top, area.bottom - height));
  SetWindowPos(window_, nullptr, now.left, top, frame.right - frame.left, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

INT_PTR CALLBACK Form::Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, l);
    reinterpret_cast<Form*>(l)->window_ = window;
  }
  auto* const form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
  return form == nullptr ? FALSE : form->Handle(message, w, l);
}

INT_PTR Form::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_INITDIALOG:
      Init();
      return FALSE;  // The focus is where OnInit put it.
    case WM_COMMAND:
      if (HIWORD(w) == BN_CLICKED) OnCommand(LOWORD(w));
      return TRUE;
    case WM_DPICHANGED: {
      dpi_ = LOWORD(w);
      const RECT& proposed = *reinterpret_cast<const RECT*>(l);
      SetWindowPos(window_, nullptr, proposed.left, proposed.top, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
      TakeFontsAndIcons();
      Arrange();
      return TRUE;
    }
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, DWLP_USER, 0);
      window_ = nullptr;
      return FALSE;
    default:
      return OnMessage(message, w, l) ? TRUE : FALSE;
  }
}

void Form::Init() {
  KeepSystemFromScaling(window_);
  dpi_ = GetDpiForWindow(window_);
  TakeFontsAndIcons();
  OnInit();
  Arrange();
  Centre();
}

void Form::TakeFontsAndIcons() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dpi_);
  LOGFONTW heading = metrics.lfMessageFont;
  heading.lfHeight = MulDiv(heading.lfHeight, 4, 3);
  // The old ones go only after no control has them any more.
  Font font(CreateFontIndirectW(&metrics.lfMessageFont));
  Font heading_font(CreateFontIndirectW(&heading));
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    const bool is_heading = GetDlgCtrlID(child) == IDC_HEADING;
    SendMessageW(child, WM_SETFONT,
                 reinterpret_cast<WPARAM>(is_heading ? heading_font.get() : font.get()), FALSE);
  }
  font_ = std::move(font);
  heading_font_ = std::move(heading_font);

  Icon icon(LoadApplicationIcon(MulDiv(32, static_cast<int>(dpi_), 96)));
  Icon small_icon(LoadApplicationIcon(GetSystemMetricsForDpi(SM_CXSMICON, dpi_)));
  SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon.get()));
  SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small_icon.get()));
  SendDlgItemMessageW(window_, IDC_PICTURE, STM_SETICON, reinterpret_cast<WPARAM>(icon.get()), 0);
  icon_ = std::move(icon);
  small_icon_ = std::move(small_icon);
}

void Form::Centre() {
  RECT frame{};
  GetWindowRect(window_, &frame);
  const HWND owner = GetWindow(window_, GW_OWNER);
  const RECT area = WorkArea(owner != nullptr ? owner : window_);
  RECT around = area;
  if (owner != nullptr) GetWindowRect(owner, &around);
  const LONG width = frame.right - frame.left;
  const LONG height = frame.bottom - frame.top;
  const LONG x = (around.left + around.right - width) / 2;
  const LONG y = (around.top + around.bottom - height) / 2;
  SetWindowPos(window_, nullptr, std::max(area.left, std::min(x, area.right - width)),
               std::max(area.top, std::min(y, area.bottom - height)), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace desktop_host
