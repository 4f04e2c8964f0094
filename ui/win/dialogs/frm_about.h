// What the program is, which version runs, and where it keeps its data. Opens
// nothing itself.
#pragma once

#include <functional>
#include <string>

#include "platform/win32/handles.h"
#include "ui/win/toolkit/dialog.h"

namespace varnowick {

class frmAbout : public Dialog {
 public:
  frmAbout(std::wstring dataFolder, std::function<void()> openDataFolder);
  void show(HWND owner) { showModal(owner); }

  enum Id : int { kIcon = 100, kName, kVersion, kWhat, kDataFolder, kOpenDataFolder };

 protected:
  void initialise() override;
  int firstFocus() const override { return IDOK; }
  void command(int id) override;

 private:
  std::wstring dataFolder_;
  std::function<void()> openDataFolder_;
  FontHandle nameFont_;
};

// The product version of the running program out of its version resource, as
// "1.2.3.4"; empty when there is none.
std::wstring programVersion();

}  // namespace varnowick
