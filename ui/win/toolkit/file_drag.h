// Files in the forms in which programs hand them to each other: as a data object for
// dragging and the clipboard, with what is to become of them. Deletes nothing: who
// moves files does it himself.
#pragma once

#include <objidl.h>
#include <windows.h>

#include <functional>
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

// The clipboard holds files, without asking whoever put them there.
bool clipboardHasFiles();

// How a transfer of files that were offered ended.
struct TransferEnd {
  bool moved = false;     // they were to be moved; else copied
  bool complete = false;  // all of them, as was wished
};
// Tells the source, and says what Drop answers. What was moved has been moved for the
// source, which must delete nothing: not even where only some of it could be moved.
DWORD tellEnd(IDataObject& data, TransferEnd end);

// Whoever has to hear of the end of a transfer that goes on in the background; to be
// called at most once. It is told from another thread, as it may not answer. Empty
// where there is nobody.
using TellSource = std::function<void(TransferEnd)>;

// Within Drop: a source that lets its target finish afterwards keeps what it offers
// until it is told. Empty where it wants everything done before Drop returns.
TellSource finishLater(IDataObject& data);
// For files that were cut: when they have been moved they cannot be pasted again, and
// stay on the clipboard when not. Only the clipboard as it is now is meant.
TellSource takeOffClipboard();

}  // namespace varnowick
