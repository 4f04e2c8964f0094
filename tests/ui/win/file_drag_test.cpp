#include "ui/win/file_drag.h"

#include <gtest/gtest.h>
#include <ole2.h>
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

TEST_F(FileDrag, TheFormatsAreListed) {
  const ComPtr<IDataObject> data = makeFileData({L"C:\\a"}, DROPEFFECT_COPY);
  ComPtr<IEnumFORMATETC> formats;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.put()), S_OK);
  FORMATETC found[4]{};
  ULONG count = 0;
  EXPECT_EQ(formats->Next(4, found, &count), S_FALSE);
  ASSERT_EQ(count, 2U);
  EXPECT_EQ(found[0].cfFormat, CF_HDROP);
  EXPECT_EQ(formats->Skip(1), S_FALSE);
  EXPECT_EQ(formats->Reset(), S_OK);
  EXPECT_EQ(formats->Skip(1), S_OK);
  ComPtr<IEnumFORMATETC> rest;
  ASSERT_EQ(formats->Clone(rest.put()), S_OK);
  EXPECT_EQ(rest->Next(1, found, nullptr), S_OK);
  EXPECT_EQ(rest->Next(1, found, nullptr), S_FALSE);
}

TEST_F(FileDrag, WhatTargetsTellIsKeptWithinBounds) {
  const ComPtr<IDataObject> data = makeFileData({L"C:\\a"}, 0);
  const UINT performed = RegisterClipboardFormatW(L"Performed DropEffect");
  tellMoved(*data.get());
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

TEST_F(FileDrag, TheClipboardTellsCutFromCopied) {
  for (const bool cut : {true, false}) {
    ASSERT_TRUE(putFilesOnClipboard({L"C:\\a", L"C:\\b"}, cut));
    const OfferedFiles files = readClipboardFiles();
    EXPECT_EQ(files.paths, (Paths{L"C:\\a", L"C:\\b"}));
    EXPECT_EQ((files.preferredEffect & DROPEFFECT_MOVE) != 0, cut);
    EXPECT_EQ((files.preferredEffect & DROPEFFECT_COPY) != 0, !cut);
  }
  clearClipboard();
  EXPECT_TRUE(readClipboardFiles().paths.empty());
  EXPECT_FALSE(putFilesOnClipboard({}, true));
}

}  // namespace
}  // namespace varnowick
