// Which picture stands for a web site: reads the addresses of its icons from the
// page and judges what comes from them. Pages and pictures are hostile. Fetches
// nothing and decodes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text_codec.h"

namespace varnowick {

// The part of a page that is looked at: icons stand at its beginning.
inline constexpr std::size_t kMaxPageHead = 256 * 1024;
inline constexpr std::size_t kMaxSiteIcons = 6;
inline constexpr std::size_t kMaxSiteIconBytes = 512 * 1024;

// What of an address is asked for unasked: its site ("http://example.org:81/").
// Nothing for other schemes and for hosts that are not public.
std::optional<std::wstring> siteIconRoot(std::wstring_view address);

// The addresses to try, best first: those that the page names, of which the
// smallest that is no smaller than wantedEdge (in pixels) comes first, then
// "/favicon.ico". Empty when the page's own address is not http or https.
std::vector<std::wstring> siteIconAddresses(std::string_view page, std::wstring_view pageAddress,
                                            int wantedEdge, TextCodec& codec);

// Icons are asked for again after a week; what has none, the next day. Days count
// from any beginning.
inline constexpr std::uint64_t kSiteIconDays = 7;
bool siteIconIsDue(std::uint64_t fetchedDay, bool hasIcon, std::uint64_t today);

// True for the bytes of a PNG, GIF, JPEG, BMP or ICO file that claims to be of a
// size that icons have.
bool isUsableSiteIcon(std::string_view bytes);

}  // namespace varnowick
