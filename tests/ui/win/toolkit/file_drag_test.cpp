#include "ui/win/toolkit/file_drag.h"

#include <gtest/gtest.h>
#include <ole2.h>
#include <shldisp.h>
#include <shlobj.h>

namespace varnowick {
namespace {

using Paths = std::vector<std::wstring>;

struct FileDrag : testing::Test {
  FileDrag() { OleInitialize(nullptr); }
  ~FileDrag() override { OleUninitialize(); }
};

FORMATETC asMemory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

// What another program tells about a drop.
HRESULT tell(IDataObject& data, UINT format, std::size_t size) {
  STGMEDIUM medium{};
  medium.tymed = TYMED_HGLOBAL;
  medium.hGlobal = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  FORMATETC as = asMemory(format);
  const HRESULT result = data.SetData(&as, &medium, TRUE);
  if (FAILED(result)) ReleaseStgMedium(&medium);
  return result;
}

TEST_F(FileDrag, WhatIsOfferedIsReadBack) {
  const Paths lists[] = {{L"C:\\a & b.txt"},
                         {L"C:\\\u00e9\u4e16.txt", L"\\\\server\\share\\x", L"D:\\"},
                         Paths(5000, L"C:\\" + std::wstring(200, L'x'))};
  for (const Paths& list : lists) {
    const ComPtr<IDataObject> data = makeFileData(list, DROPEFFECT_MOVE);
    ASSERT_TRUE(offersFiles(*data.get()));
    const OfferedFiles files = readFiles(*data.get());
    EXPECT_EQ(files.paths, list);
    EXPECT_EQ(files.preferredEffect, static_cast<DWORD>(DROPEFFECT_MOVE));
  }
  EXPECT_EQ(readFiles(*makeFileData({L"C:\\a"}, 0).get()).preferredEffect, 0U);
}

TEST_F(FileDrag, WhatTargetsTellIsKeptWithinBounds) {
  const ComPtr<IDataObject> data = makeFileData({L"C:\\a"}, 0);
  const UINT performed = RegisterClipboardFormatW(L"Performed DropEffect");
  tellEnd(*data.get(), {.moved = true, .complete = true});
  FORMATETC wanted = asMemory(performed);
  EXPECT_EQ(data->QueryGetData(&wanted), S_OK);
  EXPECT_EQ(tell(*data.get(), performed, 4), S_OK) << "told again";
  EXPECT_TRUE(FAILED(tell(*data.get(), performed, 1'000'000)));
  HRESULT last = S_OK;
  for (UINT format = 0xC100; format < 0xC200 && SUCCEEDED(last); ++format)
    last = tell(*data.get(), format, 4);
  EXPECT_TRUE(FAILED(last)) << "without end";
  EXPECT_EQ(readFiles(*data.get()).paths, Paths{L"C:\\a"});
}

DWORD told(IDataObject& data, const wchar_t* name) {
  FORMATETC wanted = asMemory(RegisterClipboardFormatW(name));
  STGMEDIUM medium{};
  if (data.GetData(&wanted, &medium) != S_OK) return ~0UL;
  const DWORD effect = *static_cast<DWORD*>(GlobalLock(medium.hGlobal));
  GlobalUnlock(medium.hGlobal);
  ReleaseStgMedium(&medium);
  return effect;
}

TEST_F(FileDrag, SourcesDeleteNothingThatWasMovedAndNothingThatFailed) {
  const struct {
    TransferEnd end;
    DWORD answer, logical;
  } rows[] = {{{.moved = true, .complete = true}, DROPEFFECT_NONE, DROPEFFECT_MOVE},
              {{.moved = true, .complete = false}, DROPEFFECT_NONE, DROPEFFECT_NONE},
              {{.moved = false, .complete = true}, DROPEFFECT_COPY, DROPEFFECT_COPY},
              {{.moved = false, .complete = false}, DROPEFFECT_NONE, DROPEFFECT_NONE}};
  for (const auto& row : rows) {
    const ComPtr<IDataObject> data = makeFileData({L"C:\\a"}, 0);
    EXPECT_EQ(tellEnd(*data.get(), row.end), row.answer);
    EXPECT_EQ(told(*data.get(), L"Performed DropEffect"), row.answer);
    EXPECT_EQ(told(*data.get(), L"Logical Performed DropEffect"), row.logical);
  }
}

// That it ends is all that can be seen here: Wine takes no SetData to another thread.
TEST_F(FileDrag, TheEndIsToldFromAnotherThread) {
  const ComPtr<IDataObject> data = makeFileData({L"C:\\a"}, 0);
  ComPtr<IDataObjectAsyncCapability> later;
  ASSERT_EQ(data->QueryInterface(__uuidof(IDataObjectAsyncCapability), later.putVoid()), S_OK);
  const TellSource tellSource = finishLater(*data.get());
  ASSERT_TRUE(tellSource);
  BOOL running = FALSE;
  later->InOperation(&running);
  EXPECT_TRUE(running);
  tellSource({.moved = false, .complete = true});
  const DWORD start = GetTickCount();
  while (running && GetTickCount() - start < 20'000) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    later->InOperation(&running);
  }
  EXPECT_FALSE(running);
}

TEST_F(FileDrag, TheClipboardTellsCutFromCopied) {
  for (const bool cut : {true, false}) {
    ASSERT_TRUE(putFilesOnClipboard({L"C:\\a", L"C:\\b"}, cut));
    const OfferedFiles files = readClipboardFiles();
    EXPECT_EQ(files.paths, (Paths{L"C:\\a", L"C:\\b"}));
    EXPECT_EQ((files.preferredEffect & DROPEFFECT_MOVE) != 0, cut);
    EXPECT_EQ((files.preferredEffect & DROPEFFECT_COPY) != 0, !cut);
  }
  OleSetClipboard(nullptr);
  EXPECT_TRUE(readClipboardFiles().paths.empty());
  EXPECT_FALSE(putFilesOnClipboard({}, true));
}

}  // namespace
}  // namespace varnowick
