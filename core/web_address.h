// Addresses of the web as requests need them: their parts, where a reference or a
// redirect leads, and the name of a proxy as settings hold it. Only http and
// https exist here. Every text is hostile; nothing is fetched.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace varnowick {

inline constexpr std::size_t kMaxWebAddress = 2048;

struct WebAddress {
  bool secure = false;        // https
  std::wstring host;          // name or number, without the port
  unsigned port = 0;          // 1 to 65535
  std::wstring path;          // from the first slash up to query and fragment
  std::wstring query;         // with its question mark, or empty
  std::wstring site() const;  // scheme, host and port: "http://example.org:81"
};

// Nothing for other schemes, for names to sign in with, for blanks, quotes,
// backslashes and control characters, and for what is too long.
std::optional<WebAddress> parseWebAddress(std::wstring_view address);

// The address that a reference on the page, or a redirect from it, leads to; nothing
// unless that is http or https. What came by https leads to https only. Fragments are
// left out.
std::optional<std::wstring> resolveWebReference(std::wstring_view pageAddress,
                                                std::wstring_view reference);

// What stands in the request line, out of the UTF-8 of path and query: bytes that
// are no part of an address are written as %XX. What is escaped already stays.
std::string escapedForRequest(std::string_view utf8);

// The proxy as "host" or "host:port" out of what a user has entered; empty when
// there is to be none ("", "0", or what can be no name).
std::wstring proxyServer(std::wstring_view setting);

}  // namespace varnowick
