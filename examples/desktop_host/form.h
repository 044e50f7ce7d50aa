#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_FORM_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_FORM_H_

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

#include "column.h"

namespace desktop_host {

std::wstring WindowText(HWND window);

/// Whether a control is to be seen once its window is: IsWindowVisible is false until then.
bool HasVisibleStyle(HWND control);

/// A window made from a dialog resource, from which keyboard control comes for nothing: tab order,
/// default button, Esc, accelerators. Fonts and places of its controls are the class's own work and
/// follow the scaling of the monitor that the window is on.
class Form {
 public:
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Null before the window is made and after it is gone.
  HWND window() const { return window_; }

 protected:
  Form() = default;

  bool Create(int resource);
  /// Returns what `EndDialog` was given.
  INT_PTR RunModal(int resource, HWND owner);

  /// The window is there, with the resource's texts, and not yet shown.
  virtual void OnInit() = 0;
  /// A button was pressed; Esc and the window's own close button give IDCANCEL.
  virtual void OnCommand(int id) = 0;
  /// Any message; true when it needs nothing further.
  virtual bool OnMessage(UINT, WPARAM, LPARAM) { return false; }
  /// The width of the content, in units of 1/96 inch.
  virtual int Width() const = 0;
  virtual void PlaceControls(Column& column) = 0;

  HWND Control(int id) const { return GetDlgItem(window_, id); }
  void SetText(int id, const std::wstring& text);
  void Show(int id, bool shown);
  bool IsShown(int id) const;
  /// To be called after texts and visibilities have changed.
  void Arrange();

 private:
  struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
  };
  struct DestroyIconHandle {
    void operator()(HICON icon) const { DestroyIcon(icon); }
  };
  using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
  using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, DestroyIconHandle>;

  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l);
  INT_PTR Handle(UINT message, WPARAM w, LPARAM l);
  void Init();
  void TakeFontsAndIcons();
  void Centre();

  HWND window_ = nullptr;
  UINT dpi_ = 96;
  Font font_;
  Font heading_font_;
  Icon icon_;
  Icon small_icon_;
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_FORM_H_
