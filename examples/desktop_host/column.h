#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_COLUMN_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_COLUMN_H_

#include <windows.h>

#include <initializer_list>

namespace desktop_host {

/// Places a window's controls below each other. Texts are measured in the font they are drawn in,
/// so nothing is cut off whatever the language, font or scaling. Hidden controls take no room.
class Column {
 public:
  /// \param width of the content in units of 1/96 inch, as all numbers here.
  Column(HWND window, UINT dpi, int width);

  /// An icon with two texts beside it.
  void Header(int icon, int heading, int subheading);
  /// A text, wrapped where needed.
  void Text(int id) { Texts({id}, 1); }
  /// Texts right below each other, with room for so many lines at least in all.
  void Texts(std::initializer_list<int> ids, int lines);
  /// An edit control. One with several lines has a scroll bar when its text needs it.
  void Field(int id, int lines);
  /// A progress bar, which keeps its room while it is hidden.
  void Bar(int id);
  void Rule(int id);
  void Gap(int height) { y_ += Scaled(height); }
  /// One row of buttons, some from the left and some up to the right end.
  void Buttons(std::initializer_list<int> left, std::initializer_list<int> right);

  /// The client area that holds all of it, in pixels.
  SIZE Size() const { return {2 * margin_ + width_, y_ + margin_}; }

 private:
  int Scaled(int units) const { return MulDiv(units, static_cast<int>(dpi_), 96); }
  bool IsShown(int id) const;
  SIZE TextSize(int id, int width) const;
  int LineHeight(int id) const;
  int ButtonWidth(int id) const;
  void Place(int id, int x, int y, int width, int height) const;

  HWND window_;
  UINT dpi_;
  int margin_;
  int width_;
  int y_;
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_COLUMN_H_
