// Modal dialogs built from rows of control, identifier, text and rectangle, so
// that no dialog needs a resource. Rectangles are in dialog units.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace varnowick {

enum class DialogControl { Label, Edit, CheckBox, Button, DefaultButton, ComboBox, ErrorLabel };

struct DialogRow {
  DialogControl control;
  int id;
  const wchar_t* text;
  short x, y, width, height;
};

class Dialog {
 public:
  Dialog(std::wstring title, short width, short height, std::vector<DialogRow> rows)
      : title_(std::move(title)), width_(width), height_(height), rows_(std::move(rows)) {}
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Shows the dialog and waits. The identifier passed to end(), or IDCANCEL.
  INT_PTR showModal(HWND owner);

 protected:
  virtual void initialise() {}
  // A button was pressed; IDCANCEL also stands for Esc and the close box.
  virtual void command(int id) { end(id); }
  // An edit, combo or check box changed.
  virtual void changed(int /*id*/) {}

  void end(int result) { EndDialog(handle_, result); }
  HWND handle() const { return handle_; }
  HWND item(int id) const { return GetDlgItem(handle_, id); }
  std::wstring text(int id) const;
  void setText(int id, const std::wstring& text);
  bool checked(int id) const;
  void setChecked(int id, bool on);

 private:
  static INT_PTR CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  std::wstring title_;
  short width_;
  short height_;
  std::vector<DialogRow> rows_;
  HWND handle_ = nullptr;
};

// The text of any window, whatever its length.
std::wstring windowText(HWND window);

}  // namespace varnowick
