#include "platform/win32/http_exchange.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <new>
#include <optional>
#include <utility>

#include "core/public_host.h"
#include "core/unpack.h"
#include "core/web_address.h"
#include "platform/win32/win32_text_codec.h"
#include "platform/win32/win_http.h"

namespace varnowick {

namespace {

constexpr int kMaxRedirects = 10;
constexpr std::size_t kReplyChunkBytes = 16 * 1024;
constexpr std::size_t kMaxBodySent = 16U << 20;
constexpr DWORD kMaxHeaderBytes = 256 * 1024;
constexpr DWORD kStatusPermanentRedirect = 308;
// Names that came later.
constexpr DWORD kOptionSecureProtocols = 84;
constexpr DWORD kTls12And13 = 0x0800 | 0x2000;
constexpr DWORD kTls10To12 = 0x0080 | 0x0200 | 0x0800;

struct Failure {
  FetchFailure kind;
  const wchar_t* text;
};

constexpr Failure kTooLong{FetchFailure::TooLarge, L"The server's answer is too long."};
constexpr Failure kNotUnderstood{FetchFailure::NotUnderstood,
                                 L"The server's answer was not understood."};
constexpr Failure kNotOpened{FetchFailure::BadRedirect,
                             L"The server refers to an address that is not opened."};
constexpr Failure kCircle{FetchFailure::BadRedirect, L"The server's references lead in a circle."};
constexpr Failure kNoMemory{FetchFailure::Lost, L"There is not enough memory."};
constexpr Failure kNoEngine{FetchFailure::NotSupported, L"This system cannot open web addresses."};
constexpr Failure kBadRequest{FetchFailure::NotSupported, L"The address cannot be opened."};

std::optional<Failure> failureOf(DWORD code) {
  switch (code) {
    case ERROR_WINHTTP_TIMEOUT:
      return Failure{FetchFailure::TimedOut, L"The server did not answer in time."};
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
      return Failure{FetchFailure::NoName, L"The server's name could not be found."};
    case ERROR_WINHTTP_CANNOT_CONNECT:
      return Failure{FetchFailure::Refused, L"The connection to the server could not be made."};
    case ERROR_WINHTTP_CONNECTION_ERROR:
      return Failure{FetchFailure::Lost, L"The connection to the server was lost."};
    case ERROR_WINHTTP_SECURE_FAILURE:
    case ERROR_WINHTTP_SECURE_CERT_CN_INVALID:
    case ERROR_WINHTTP_SECURE_CERT_DATE_INVALID:
    case ERROR_WINHTTP_SECURE_INVALID_CA:
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
      return Failure{FetchFailure::Certificate, L"The server's certificate could not be verified."};
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:
      return kNotUnderstood;
    case ERROR_WINHTTP_INVALID_URL:
      return kBadRequest;
    case ERROR_WINHTTP_HEADER_SIZE_OVERFLOW:
      return kTooLong;
    default:
      return std::nullopt;
  }
}

FetchReply failed(const Failure& failure) {
  FetchReply reply;
  reply.failure = failure.kind;
  reply.reason = failure.text;
  return reply;
}

FetchReply failed(DWORD code) {
  if (const auto known = failureOf(code)) return failed(*known);
  FetchReply reply = failed({FetchFailure::Lost, L""});
  reply.reason = L"The request failed (error " + std::to_wstring(code) + L").";
  return reply;
}

std::wstring widened(std::string_view text) {
  std::wstring wide;
  for (const char c : text) wide += static_cast<unsigned char>(c);
  return wide;
}

std::string narrowed(std::wstring_view text) {
  std::string narrow;
  for (const wchar_t c : text) narrow += c < 0x100 ? static_cast<char>(c) : '?';
  return narrow;
}

bool sameName(std::string_view one, std::string_view other) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [&](char a, char b) { return lower(a) == lower(b); });
}

// Nothing in it may begin another header, or another request.
bool isToken(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return c > ' ' && c < 0x7F &&
           std::string_view("()<>@,;:\\\"/[]?={}").find(c) == std::string_view::npos;
  });
}

bool maySend(const FetchRequest& request) {
  return isToken(request.method) && request.body.size() <= kMaxBodySent &&
         std::all_of(request.headers.begin(), request.headers.end(), [](const auto& header) {
           return isToken(header.first) &&
                  std::none_of(header.second.begin(), header.second.end(), [](char c) {
                    return static_cast<unsigned char>(c) < ' ' || c == 0x7F;
                  });
         });
}

// Never 0: what has failed must not pass for done.
DWORD lastHttpError() {
  const DWORD code = GetLastError();
  return code != 0 ? code : static_cast<DWORD>(ERROR_WINHTTP_INTERNAL_ERROR);
}

// What the engine's threads write to. It is freed when the engine has said its
// last word on the request, which may be long after nobody waits any more.
class Operation {
 public:
  static Operation* create() { return new Operation; }
  void release() {
    if (InterlockedDecrement(&references_) == 0) delete this;
  }
  HANDLE done() const { return done_.get(); }
  DWORD error() const { return error_; }
  std::string_view received() const { return {buffer_.data(), received_}; }
  char* buffer() { return buffer_.data(); }

  // Hands the engine its own share, which it gives back with the handle.
  bool attachTo(HINTERNET request) {
    const WinHttp& api = WinHttp::get();
    auto context = reinterpret_cast<DWORD_PTR>(this);
    if (!done_ || !api.setOption(request, WINHTTP_OPTION_CONTEXT_VALUE, &context, sizeof context) ||
        api.setStatusCallback(request, &Operation::report,
                              WINHTTP_CALLBACK_FLAG_ALL_COMPLETIONS | WINHTTP_CALLBACK_FLAG_HANDLES,
                              0) == WINHTTP_INVALID_STATUS_CALLBACK) {
      return false;
    }
    InterlockedIncrement(&references_);
    return true;
  }

 private:
  Operation() : done_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
  ~Operation() = default;
  void finish(DWORD error, DWORD received) {
    error_ = error;
    received_ = std::min<std::size_t>(received, buffer_.size());
    SetEvent(done_.get());
  }
  static void CALLBACK report(HINTERNET, DWORD_PTR context, DWORD status, void* info,
                              DWORD length) {
    auto* self = reinterpret_cast<Operation*>(context);
    if (self == nullptr) return;
    switch (status) {
      case WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE:
      case WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE:
        self->finish(0, 0);
        break;
      case WINHTTP_CALLBACK_STATUS_READ_COMPLETE:
        self->finish(0, length);
        break;
      case WINHTTP_CALLBACK_STATUS_REQUEST_ERROR:
        self->finish(static_cast<const WINHTTP_ASYNC_RESULT*>(info)->dwError, 0);
        break;
      case WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING:
        self->release();
        break;
      default:
        break;
    }
  }

  LONG references_ = 1;
  KernelHandle done_;
  DWORD error_ = 0;
  std::size_t received_ = 0;
  std::array<char, kReplyChunkBytes> buffer_{};
};

class Exchange {
 public:
  Exchange(const FetchRequest& request, HANDLE cancel)
      : wanted_(request), cancel_(cancel), begin_(GetTickCount()) {}

  FetchReply run() {
    if (!openSession()) return failed(lastHttpError());
    std::wstring url = wanted_.url;
    for (int hop = 0; hop <= kMaxRedirects; ++hop) {
      const Hop result = visit(url);
      if (result.error != 0) return failed(result.error);
      if (!result.redirected) return answer(std::move(url), result.status);
      auto next = resolveWebReference(url, result.location);
      if (!next) return failed(kNotOpened);
      sendLess(url, *next, result.status);
      url = std::move(*next);
    }
    return failed(kCircle);
  }

 private:
  struct Hop {
    DWORD error = 0;
    int status = 0;
    bool redirected = false;
    std::wstring location;
  };

  // Not everything goes on to where a redirect leads.
  void sendLess(const std::wstring& from, const std::wstring& to, int status) {
    const auto before = parseWebAddress(from);
    const auto after = parseWebAddress(to);
    const bool keeps =
        status == HTTP_STATUS_REDIRECT_KEEP_VERB || status == kStatusPermanentRedirect;
    if (!keeps && wanted_.method != "GET" && wanted_.method != "HEAD") {
      wanted_.method = "GET";
      wanted_.body.clear();
      dropHeaders({"Content-Type", "Content-Encoding", "Content-Language"});
    }
    if (!before || !after || before->site() != after->site())
      dropHeaders({"Authorization", "Proxy-Authorization", "Cookie"});
  }

  void dropHeaders(std::initializer_list<std::string_view> names) {
    std::erase_if(wanted_.headers, [&](const auto& header) {
      return std::any_of(names.begin(), names.end(),
                         [&](std::string_view name) { return sameName(name, header.first); });
    });
  }

  DWORD left() const {
    const DWORD passed = GetTickCount() - begin_;
    return passed < wanted_.milliseconds ? wanted_.milliseconds - passed : 0;
  }

  bool openSession() {
    const std::wstring proxy = proxyServer(wanted_.proxy);
    session_.reset(
        api_.open(L"Varnowick",
                  proxy.empty() ? WINHTTP_ACCESS_TYPE_NO_PROXY : WINHTTP_ACCESS_TYPE_NAMED_PROXY,
                  proxy.empty() ? WINHTTP_NO_PROXY_NAME : proxy.c_str(), WINHTTP_NO_PROXY_BYPASS,
                  WINHTTP_FLAG_ASYNC));
    if (!session_) return false;
    // The engine's own limits only have to be no shorter than ours.
    const int limit = static_cast<int>(std::min<std::uint32_t>(wanted_.milliseconds, 0x7FFFFFFF));
    api_.setTimeouts(session_.get(), limit, limit, limit, limit);
    for (DWORD protocols : {kTls12And13, kTls10To12}) {
      if (api_.setOption(session_.get(), kOptionSecureProtocols, &protocols, sizeof protocols))
        break;
    }
    return true;
  }

  // Waits for what was begun. 0, or why it has not been done.
  DWORD wait(BOOL begun, Operation& operation) const {
    if (!begun) return lastHttpError();
    const HANDLE events[] = {operation.done(), cancel_};
    switch (WaitForMultipleObjects(cancel_ != nullptr ? 2 : 1, events, FALSE, left())) {
      case WAIT_OBJECT_0:
        return operation.error();
      case WAIT_OBJECT_0 + 1:
        return ERROR_WINHTTP_OPERATION_CANCELLED;
      default:
        return ERROR_WINHTTP_TIMEOUT;
    }
  }

  DWORD number(HINTERNET request, DWORD what, DWORD otherwise) const {
    DWORD value = 0;
    DWORD size = sizeof value;
    return api_.queryHeaders(request, what | WINHTTP_QUERY_FLAG_NUMBER,
                             WINHTTP_HEADER_NAME_BY_INDEX, &value, &size, WINHTTP_NO_HEADER_INDEX)
               ? value
               : otherwise;
  }

  bool openRequest(const WebAddress& address) {
    Win32TextCodec codec;
    const std::string target = escapedForRequest(codec.toUtf8(address.path + address.query));
    connection_.reset(api_.connect(session_.get(), address.host.c_str(),
                                   static_cast<INTERNET_PORT>(address.port), 0));
    if (!connection_) return false;
    const wchar_t* accepted[] = {L"*/*", nullptr};
    request_.reset(
        api_.openRequest(connection_.get(), widened(wanted_.method).c_str(),
                         widened(target).c_str(), nullptr, WINHTTP_NO_REFERER, accepted,
                         WINHTTP_FLAG_ESCAPE_DISABLE |
                             (address.secure ? static_cast<DWORD>(WINHTTP_FLAG_SECURE) : 0U)));
    if (!request_) return false;
    // Redirects are judged here. Cookies would be of no use; and a server must
    // not be able to ask for the user's name and password.
    DWORD without =
        WINHTTP_DISABLE_REDIRECTS | WINHTTP_DISABLE_COOKIES | WINHTTP_DISABLE_AUTHENTICATION;
    return api_.setOption(request_.get(), WINHTTP_OPTION_DISABLE_FEATURE, &without,
                          sizeof without) != FALSE;
  }

  Hop visit(const std::wstring& url) {
    const auto address = parseWebAddress(url);
    if (!address || (wanted_.publicHostsOnly && !isPublicHost(address->host)))
      return {ERROR_WINHTTP_INVALID_URL, 0, false, {}};
    if (!openRequest(*address)) return {lastHttpError(), 0, false, {}};
    struct Share {
      ~Share() { operation->release(); }
      Operation* operation = Operation::create();
    } const share;
    Operation& operation = *share.operation;
    if (!operation.attachTo(request_.get())) return {lastHttpError(), 0, false, {}};
    Hop hop = exchange(operation);
    // Whatever is still under way on it ends now.
    request_.reset();
    return hop;
  }

  std::wstring headersToSend() const {
    // Unpacked here, below the limit: the engine does it on newer systems alone.
    std::string text = "Accept-Encoding: gzip, deflate\r\n";
    for (const auto& [name, value] : wanted_.headers)
      if (!sameName(name, "Accept-Encoding")) text += name + ": " + value + "\r\n";
    return widened(text);
  }

  Hop exchange(Operation& operation) {
    Hop hop;
    const std::wstring headers = headersToSend();
    const auto size = static_cast<DWORD>(wanted_.body.size());
    hop.error =
        wait(api_.sendRequest(request_.get(), headers.c_str(), static_cast<DWORD>(headers.size()),
                              size != 0 ? wanted_.body.data() : WINHTTP_NO_REQUEST_DATA, size, size,
                              reinterpret_cast<DWORD_PTR>(&operation)),
             operation);
    if (hop.error == 0) hop.error = wait(api_.receiveResponse(request_.get(), nullptr), operation);
    if (hop.error != 0) return hop;
    const DWORD status = number(request_.get(), WINHTTP_QUERY_STATUS_CODE, 0);
    hop.status = static_cast<int>(status);
    if (status == HTTP_STATUS_MOVED || status == HTTP_STATUS_REDIRECT ||
        status == HTTP_STATUS_REDIRECT_METHOD || status == HTTP_STATUS_REDIRECT_KEEP_VERB ||
        status == kStatusPermanentRedirect) {
      hop.redirected = true;
      hop.location = location();
    } else {
      hop.error = readHeaders();
      if (hop.error == 0) hop.error = readBody(operation);
    }
    return hop;
  }

  // Empty when there is none, or one longer than addresses may be.
  std::wstring location() const {
    std::array<wchar_t, kMaxWebAddress + 1> text{};
    DWORD size = sizeof text;
    if (!api_.queryHeaders(request_.get(), WINHTTP_QUERY_LOCATION, WINHTTP_HEADER_NAME_BY_INDEX,
                           text.data(), &size, WINHTTP_NO_HEADER_INDEX)) {
      return {};
    }
    text.back() = L'\0';
    return text.data();
  }

  // The status line is left out.
  DWORD readHeaders() {
    DWORD size = 0;
    const auto query = [&](void* buffer) {
      return api_.queryHeaders(request_.get(), WINHTTP_QUERY_RAW_HEADERS_CRLF,
                               WINHTTP_HEADER_NAME_BY_INDEX, buffer, &size,
                               WINHTTP_NO_HEADER_INDEX);
    };
    query(WINHTTP_NO_OUTPUT_BUFFER);
    if (size > kMaxHeaderBytes * sizeof(wchar_t)) return ERROR_WINHTTP_HEADER_SIZE_OVERFLOW;
    std::wstring raw(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>(raw.size() * sizeof(wchar_t));
    if (!query(raw.data())) return lastHttpError();
    raw.resize(size / sizeof(wchar_t));
    const std::string text = narrowed(raw);
    for (std::size_t at = text.find('\n'); at < text.size();) {
      const std::size_t end = std::min(text.find('\n', at + 1), text.size());
      std::string_view line = std::string_view(text).substr(at + 1, end - at - 1);
      at = end;
      while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
      const std::size_t colon = line.find(':');
      if (colon == std::string_view::npos || colon == 0) continue;
      const std::size_t value = std::min(line.find_first_not_of(" \t", colon + 1), line.size());
      headers_.emplace_back(line.substr(0, colon), line.substr(value));
    }
    return 0;
  }

  DWORD readBody(Operation& operation) {
    // The answer to HEAD has the length of a body that does not come.
    const DWORD claimed =
        wanted_.method == "HEAD" ? 0 : number(request_.get(), WINHTTP_QUERY_CONTENT_LENGTH, 0);
    tooLong_ = !wanted_.keepBeginning && claimed > wanted_.maxBytes;
    while (!tooLong_) {
      const DWORD error = wait(
          api_.readData(request_.get(), operation.buffer(), kReplyChunkBytes, nullptr), operation);
      if (error != 0) return error;
      if (operation.received().empty()) {
        // Not every version of the engine says that the end was cut off.
        return body_.size() < claimed ? ERROR_WINHTTP_CONNECTION_ERROR : 0;
      }
      body_ += operation.received();
      if (body_.size() > wanted_.maxBytes) {
        body_.resize(wanted_.maxBytes);
        cut_ = wanted_.keepBeginning;
        if (cut_) return 0;
        tooLong_ = true;
      }
    }
    return 0;
  }

  std::string_view packing() const {
    std::string_view found;
    for (const auto& [name, value] : headers_)
      if (sameName(name, "Content-Encoding") && !sameName(value, "identity")) found = value;
    return found;
  }

  FetchReply answer(std::wstring url, int status) {
    FetchReply reply;
    const std::string_view packed = packing();
    if (!tooLong_ && !packed.empty() && !body_.empty()) {
      if (!sameName(packed, "gzip") && !sameName(packed, "x-gzip") && !sameName(packed, "deflate"))
        reply = failed(kNotUnderstood);
      Unpacked unpacked = unpack(body_, wanted_.maxBytes);
      tooLong_ = unpacked.tooLong && !wanted_.keepBeginning;
      // What was cut as asked has no end.
      if (!unpacked.whole && !unpacked.tooLong && !cut_) reply = failed(kNotUnderstood);
      body_ = std::move(unpacked.bytes);
    }
    if (tooLong_) reply = failed(kTooLong);
    if (reply.failure == FetchFailure::None) reply.bytes = std::move(body_);
    reply.status = status;
    reply.headers = std::move(headers_);
    reply.finalUrl = std::move(url);
    return reply;
  }

  const WinHttp& api_ = WinHttp::get();
  FetchRequest wanted_;  // as it is sent to where the redirects have led
  const HANDLE cancel_;
  const DWORD begin_;
  InternetHandle session_, connection_, request_;
  FetchHeaders headers_;
  std::string body_;
  bool tooLong_ = false;
  bool cut_ = false;
};

}  // namespace

FetchReply exchangeOverHttp(const FetchRequest& request, HANDLE cancel) {
  if (!maySend(request)) return failed(kBadRequest);
  if (!WinHttp::get().ready) return failed(kNoEngine);
  try {
    return Exchange(request, cancel).run();
  } catch (const std::bad_alloc&) {
    return failed(kNoMemory);
  }
}

}  // namespace varnowick
