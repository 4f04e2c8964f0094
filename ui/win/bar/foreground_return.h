// Who had the keyboard before the bar took it, and giving it back when the bar
// goes away: a strip that nobody looks at must not be typed into.
#pragma once

#include <windows.h>

namespace varnowick {

class ForegroundReturn {
 public:
  void attach(HWND bar) { bar_ = bar; }
  // Looks who is in front. Called whenever the bar may be about to take the
  // keyboard, and now and then: by the time it has it, nobody can tell any more.
  void look();
  // Unless the user has meanwhile gone elsewhere.
  void giveBack();
  // The same once something that is being started has had its moment: it comes to
  // the front by the right that the bar has to it.
  void giveBackAfterStart() { starting_ = true; }
  bool starting() const { return starting_; }

 private:
  HWND receiver() const;

  HWND bar_ = nullptr;
  HWND former_ = nullptr;
  DWORD formerProcess_ = 0;  // handles are used again
  bool starting_ = false;
  bool ours_ = false;  // whoever was seen last in front is a window of this program
};

}  // namespace varnowick
