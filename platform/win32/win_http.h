// The functions of the system's http library that the program uses, found when
// first needed: the library came with service packs of the oldest systems, and
// loading it with the program would delay every start.
#pragma once

#include <windows.h>
// These rely on it.
#include <winhttp.h>

#include "platform/win32/handles.h"

namespace varnowick {

struct WinHttp {
  bool ready = false;  // false: the system lacks it, and no function may be called
  decltype(&::WinHttpOpen) open = nullptr;
  decltype(&::WinHttpConnect) connect = nullptr;
  decltype(&::WinHttpOpenRequest) openRequest = nullptr;
  decltype(&::WinHttpSetOption) setOption = nullptr;
  decltype(&::WinHttpSetTimeouts) setTimeouts = nullptr;
  decltype(&::WinHttpSetStatusCallback) setStatusCallback = nullptr;
  decltype(&::WinHttpSendRequest) sendRequest = nullptr;
  decltype(&::WinHttpReceiveResponse) receiveResponse = nullptr;
  decltype(&::WinHttpQueryHeaders) queryHeaders = nullptr;
  decltype(&::WinHttpReadData) readData = nullptr;
  decltype(&::WinHttpCloseHandle) closeHandle = nullptr;

  static const WinHttp& get() {
    // Never freed: its threads may still be ending a request that was given up.
    static const WinHttp* const functions = new WinHttp;
    return *functions;
  }

 private:
  WinHttp() : library_(L"winhttp.dll") {
    ready = library_.bind("WinHttpOpen", open) && library_.bind("WinHttpConnect", connect) &&
            library_.bind("WinHttpOpenRequest", openRequest) &&
            library_.bind("WinHttpSetOption", setOption) &&
            library_.bind("WinHttpSetTimeouts", setTimeouts) &&
            library_.bind("WinHttpSetStatusCallback", setStatusCallback) &&
            library_.bind("WinHttpSendRequest", sendRequest) &&
            library_.bind("WinHttpReceiveResponse", receiveResponse) &&
            library_.bind("WinHttpQueryHeaders", queryHeaders) &&
            library_.bind("WinHttpReadData", readData) &&
            library_.bind("WinHttpCloseHandle", closeHandle);
  }
  SystemLibrary library_;
};

struct InternetHandleTraits {
  using Type = HINTERNET;
  static HINTERNET none() { return nullptr; }
  static void close(HINTERNET h) { WinHttp::get().closeHandle(h); }
};
using InternetHandle = UniqueHandle<InternetHandleTraits>;

}  // namespace varnowick
