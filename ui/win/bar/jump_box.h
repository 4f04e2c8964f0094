// The jump-to box at the top of the bar: a search field and the shortcuts, containers
// and files that match, the likeliest first. It is a child of the bar; the field and the list
// are real controls, so that typing, input methods and screen readers work as
// everywhere. It starts nothing and knows no workspace.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/handles.h"
#include "shortcuts/jump_to.h"
#include "ui/commands/keys.h"
#include "ui/scene/palette.h"
#include "ui/win/toolkit/back_buffer.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/image_source.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class PicJumpToLink final : public Window {
 public:
  struct Callbacks {
    // Asked for whenever the box opens, and by refresh().
    std::function<std::vector<JumpEntry>()> entries;
    std::function<ImageRef(const JumpTarget&)> icon;
    std::function<std::wstring(const JumpTarget&)> place;  // where it lies, or empty
    // Starts or opens it; the box is closed already.
    std::function<void(const JumpTarget&)> start;
    // Scrolls or unfolds to it and focuses its node.
    std::function<void(const JumpTarget&)> showMatch;
    // Opens its properties; the box is closed already.
    std::function<void(ShortcutSlot)> properties;
    // A key of another meaning was pressed in the field, F8 for instance.
    std::function<void(const KeyDecision&)> key;
  };
  // Images and fonts are borrowed and must outlive the box.
  PicJumpToLink(ImageSource& images, GdiFonts& fonts, Callbacks callbacks)
      : images_(images), fonts_(fonts), callbacks_(std::move(callbacks)) {}
  ~PicJumpToLink() override;

  // The window whose child the box becomes when it first opens: most starts end
  // without, and its five windows take their time.
  void attach(HWND parent, Density density);
  void setPalette(const Palette& palette);
  // The rectangle of the main panel in the parent's client pixels: the box takes
  // its width, and of its height what it needs.
  void place(const PixelRect& panel);

  // Shows the box with the focus in its field.
  void open();
  void close();
  bool shown() const { return shown_; }
  bool hasText() const { return !text().empty(); }
  bool hasFocus() const;
  // Carries out the actions that concern the box, opening it for JumpType; false
  // when the decision is none of them.
  bool apply(const KeyDecision& decision);
  // Asks for the entries anew.
  void refresh();
  void invalidate();

  // The match that Enter starts; none without matches.
  JumpTarget current() const;
  // nullptr before the box has first been open.
  HWND cboSearch() const { return cboSearch_; }
  HWND list() const { return list_; }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  struct Geometry {
    RECT box;    // in the parent
    RECT field;  // these in the box
    RECT edit;
    RECT list;
    int visibleRows = 0;
  };
  Geometry geometry() const;
  RECT field() const;
  int scaled(int pixels) const { return MulDiv(pixels, density_.dpi, 96); }
  std::wstring text() const;
  std::wstring words() const;
  PixelRect thumb() const;
  bool makeWindows();
  HWND addChild(const wchar_t* windowClass, const wchar_t* title, DWORD style, int id);
  void makeFont();
  void arrange();
  void search();
  void select(int row);
  void startCurrent();
  void clear();
  void paint();
  void drawItem(const DRAWITEMSTRUCT& item);

  static LRESULT CALLBACK editProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK listProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT onEdit(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT onList(UINT message, WPARAM wParam, LPARAM lParam);
  // True when the key has been dealt with.
  bool onEditKey(int key);
  int rowAt(LPARAM point) const;
  void hoverRow(int row);

  ImageSource& images_;
  GdiFonts& fonts_;
  Callbacks callbacks_;
  Density density_;
  Palette palette_;
  FontHandle font_;
  BrushHandle fieldBrush_, listBrush_;
  BackBuffer buffer_, rowBuffer_;
  PixelRect panel_;
  HWND parent_ = nullptr;
  HWND cboSearch_ = nullptr;
  HWND list_ = nullptr;
  WNDPROC editBase_ = nullptr;
  WNDPROC listBase_ = nullptr;

  JumpTo jumpTo_;
  std::wstring query_;
  std::vector<JumpMatch> matches_;
  MatchPosition position_;
  bool shown_ = false;
  int hovered_ = -1;
  int pressed_ = -1;
  int wheelRest_ = 0;
};

}  // namespace varnowick
