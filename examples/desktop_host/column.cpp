#include "column.h"

#include <algorithm>
#include <string>

#include "form.h"

namespace desktop_host {
namespace {

constexpr int kMargin = 14;
constexpr int kIconSize = 32;
constexpr int kButtonWidth = 82;
constexpr int kButtonHeight = 25;
/// In pixels: what an edit control leaves above and below its text does not grow with the scaling.
constexpr int kFieldFrame = 8;
constexpr int kBarHeight = 6;
constexpr int kBetweenButtons = 8;

/// A window's device context with the font of one of its controls.
class FontContext {
 public:
  explicit FontContext(HWND control)
      : control_(control),
        context_(GetDC(control)),
        previous_(SelectObject(
            context_, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)))) {}
  ~FontContext() {
    SelectObject(context_, previous_);
    ReleaseDC(control_, context_);
  }
  FontContext(const FontContext&) = delete;
  FontContext& operator=(const FontContext&) = delete;

  HDC get() const { return context_; }

 private:
  HWND control_;
  HDC context_;
  HGDIOBJ previous_;
};

}  // namespace

Column::Column(HWND window, UINT dpi, int width)
    : window_(window), dpi_(dpi), margin_(Scaled(kMargin)), width_(Scaled(width)), y_(margin_) {}

void Column::Header(int icon, int heading, int subheading) {
  const int icon_size = Scaled(kIconSize);
  const int x = margin_ + icon_size + Scaled(12);
  const int width = width_ - (x - margin_);
  const int heading_height = static_cast<int>(TextSize(heading, width).cy);
  const int subheading_height = static_cast<int>(TextSize(subheading, width).cy);
  const int height = heading_height + subheading_height;
  Place(icon, margin_, y_ + std::max(0, (height - icon_size) / 2), icon_size, icon_size);
  Place(heading, x, y_, width, heading_height);
  Place(subheading, x, y_ + heading_height, width, subheading_height);
  y_ += std::max(height, icon_size);
}

void Column::Texts(std::initializer_list<int> ids, int lines) {
  const int top = y_;
  int least = 0;
  for (const int id : ids) {
    if (!IsShown(id)) continue;
    const int height = static_cast<int>(TextSize(id, width_).cy);
    Place(id, margin_, y_, width_, height);
    y_ += height;
    least = lines * LineHeight(id);
  }
  y_ = std::max(y_, top + least);
}

void Column::Field(int id, int lines) {
  if (!IsShown(id)) return;
  const int height = lines * LineHeight(id) + kFieldFrame;
  Place(id, margin_, y_, width_, height);
  if (lines > 1) {
    const HWND control = GetDlgItem(window_, id);
    ShowScrollBar(control, SB_VERT, FALSE);
    ShowScrollBar(control, SB_VERT, SendMessageW(control, EM_GETLINECOUNT, 0, 0) > lines);
  }
  y_ += height;
}

void Column::Bar(int id) {
  Place(id, margin_, y_, width_, Scaled(kBarHeight));
  y_ += Scaled(kBarHeight);
}

void Column::Rule(int id) {
  Place(id, margin_, y_, width_, 2);
  y_ += 2;
}

void Column::Buttons(std::initializer_list<int> left, std::initializer_list<int> right) {
  int x = margin_;
  for (const int id : left) {
    if (!IsShown(id)) continue;
    Place(id, x, y_, ButtonWidth(id), Scaled(kButtonHeight));
    x += ButtonWidth(id) + Scaled(kBetweenButtons);
  }
  x = margin_ + width_;
  for (auto id = std::rbegin(right); id != std::rend(right); ++id) {
    if (!IsShown(*id)) continue;
    x -= ButtonWidth(*id);
    Place(*id, x, y_, ButtonWidth(*id), Scaled(kButtonHeight));
    x -= Scaled(kBetweenButtons);
  }
  y_ += Scaled(kButtonHeight);
}

bool Column::IsShown(int id) const { return HasVisibleStyle(GetDlgItem(window_, id)); }

SIZE Column::TextSize(int id, int width) const {
  const HWND control = GetDlgItem(window_, id);
  const std::wstring text = WindowText(control);
  const FontContext context(control);
  RECT area{0, 0, width, 0};
  const bool literal = (GetWindowLongW(control, GWL_STYLE) & SS_NOPREFIX) != 0;
  DrawTextW(context.get(), text.c_str(), -1, &area,
            DT_CALCRECT | DT_WORDBREAK | (literal ? DT_NOPREFIX : 0));
  return {area.right, area.bottom};
}

int Column::LineHeight(int id) const {
  const FontContext context(GetDlgItem(window_, id));
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  return static_cast<int>(metrics.tmHeight);
}

int Column::ButtonWidth(int id) const {
  return std::max(Scaled(kButtonWidth), static_cast<int>(TextSize(id, width_).cx) + 2 * Scaled(12));
}

void Column::Place(int id, int x, int y, int width, int height) const {
  SetWindowPos(GetDlgItem(window_, id), nullptr, x, y, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace desktop_host
