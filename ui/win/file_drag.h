// Files in the forms in which programs hand them to each other: as a data object for
// dragging and the clipboard, with what is to become of them. Deletes nothing: who
// moves files does it himself.
#pragma once

#include <objidl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/win32/handles.h"

namespace varnowick {

// The preferred effect tells a clipboard's reader of cut (DROPEFFECT_MOVE) and
// copied files; 0: none is told.
ComPtr<IDataObject> makeFileData(const std::vector<std::wstring>& paths, DWORD preferredEffect);

// Lets the user drag the files until he drops them or gives up; returns after that.
// OLE must be initialised on this thread, and the mouse not captured.
void dragFiles(const std::vector<std::wstring>& paths, DWORD allowedEffects);

bool putFilesOnClipboard(const std::vector<std::wstring>& paths, bool cut);

// What another program offers; hostile until checked. A list that is longer than
// this is cut there.
inline constexpr std::size_t kMostOfferedFiles = 100'000;
struct OfferedFiles {
  std::vector<std::wstring> paths{};
  DWORD preferredEffect = 0;
};
bool offersFiles(IDataObject& data);
OfferedFiles readFiles(IDataObject& data);
OfferedFiles readClipboardFiles();

// Tells the source that the files have been moved for it, so that it deletes nothing.
void tellMoved(IDataObject& data);
// What was cut has been pasted: it cannot be pasted again.
void clearClipboard();

}  // namespace varnowick
