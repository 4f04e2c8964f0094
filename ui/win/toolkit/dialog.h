// Modal dialogs built from rows of control, identifier, text and rectangle, so
// that no dialog needs a resource. Rectangles are in dialog units.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace varnowick {

enum class DialogControl {
  Label,       // fixed words; & marks the key that leads to the control after it
  Text,        // words from outside, shown as they are
  ErrorLabel,  // the same in red
  Swatch,      // a framed field that shows a colour
  Drawing,     // drawn by the dialog; the text is its name for screen readers
  Icon,
  Edit,
  ReadOnlyEdit,
  CheckBox,
  FirstRadioButton,  // begins a group of which one is chosen
  RadioButton,
  Button,
  DefaultButton,
  ComboBox
};

struct DialogRow {
  DialogControl control;
  int id;
  const wchar_t* text;
  short x, y, width, height;
};

class Dialog {
 public:
  // A non-empty error is shown above the rows, which make room for it.
  Dialog(std::wstring title, short width, short height, std::vector<DialogRow> rows,
         std::wstring error = {});
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // The control with the error.
  static constexpr int kErrorAbove = 99;

  // Shows the dialog and waits. The identifier passed to end(), or IDCANCEL.
  INT_PTR showModal(HWND owner);

 protected:
  virtual void initialise() {}
  // The control that has the focus at first; 0: the first that takes it. A dialog
  // that begins with radio buttons names another, because the focus that the
  // system sets would choose the first of them.
  virtual int firstFocus() const { return 0; }
  // A button was pressed; IDCANCEL also stands for Esc and the close box.
  virtual void command(int id) { end(id); }
  // The user changed the text of an edit or combo box, or what a check box or
  // radio button says.
  virtual void changed(int /*id*/) {}
  // The brush behind a Text, Swatch or Label; its colours may be set on dc. nullptr:
  // as the system has it.
  virtual HBRUSH background(int /*id*/, HDC /*dc*/) { return nullptr; }

  // Draws a Drawing.
  virtual void draw(int /*id*/, const DRAWITEMSTRUCT& /*item*/) {}

  void end(int result) { EndDialog(handle_, result); }
  HWND handle() const { return handle_; }
  HWND item(int id) const { return GetDlgItem(handle_, id); }
  std::wstring text(int id) const;
  void setText(int id, const std::wstring& text);
  bool checked(int id) const;
  void setChecked(int id, bool on);
  void enable(int id, bool on) { EnableWindow(item(id), on); }
  // Moves the focus as the Tab key does; the text of an edit gets selected.
  void focus(int id);
  // Says what is wrong with a field in an error label, and leads there.
  void complain(int label, const std::wstring& message, int field);

 private:
  static INT_PTR CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  const DialogRow* rowOf(int id) const;
  HBRUSH backgroundOf(int id, HDC dc);
  void notified(int id, int notification);

  std::wstring title_;
  short width_;
  short height_;
  std::vector<DialogRow> rows_;
  std::wstring error_;
  HWND handle_ = nullptr;
  bool ready_ = false;  // what initialise() fills in is no change of the user's
};

// As it stands on a swatch.
std::wstring colourText(COLORREF colour);

// The text of any window, whatever its length.
std::wstring windowText(HWND window);

}  // namespace varnowick
