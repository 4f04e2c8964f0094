#include "core/line_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace varnowick {
namespace {

constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
// Longer than any number that is written; keeps hostile digits from costing time.
constexpr std::size_t kLongestNumber = 64;

std::uint64_t loadWord(const char* p) {
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

// The length of the valid UTF-8 sequence at p, or 0.
std::size_t sequenceLength(const unsigned char* p, const unsigned char* end) {
  const unsigned lead = *p;
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : 2U;
  if (lead < 0xC2 || lead > 0xF4 || static_cast<std::size_t>(end - p) < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((p[i] & 0xC0U) != 0x80U) return 0;
  const bool overlong = (lead == 0xE0 && p[1] < 0xA0) || (lead == 0xF0 && p[1] < 0x90);
  const bool outside = (lead == 0xED && p[1] > 0x9F) || (lead == 0xF4 && p[1] > 0x8F);
  return overlong || outside ? 0 : length;
}

// A codec may write what a text cannot mean (half of a character pair); such
// bytes would make the whole file be taken for ANSI.
std::string repairUtf8(std::string_view bytes) {
  std::string repaired;
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = p + bytes.size();
  bool lastWasBad = false;
  while (p != end) {
    const std::size_t length = sequenceLength(p, end);
    if (length == 0 && !lastWasBad) repaired.append("\xEF\xBF\xBD");
    if (length != 0) repaired.append(reinterpret_cast<const char*>(p), length);
    lastWasBad = length == 0;
    p += length == 0 ? 1 : length;
  }
  return repaired;
}

bool equalsIgnoringCase(std::string_view value, std::string_view lower) {
  return std::equal(value.begin(), value.end(), lower.begin(), lower.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

// Nothing for whatever is not wholly a finite decimal number.
template <class Float>
std::optional<Float> parseDecimal(std::string_view value) {
  if (!value.empty() && value.front() == '+') value.remove_prefix(1);
  if (value.empty() || value.size() > kLongestNumber) return std::nullopt;
  // from_chars would also take the words for infinity and no-number.
  const std::size_t first = value.front() == '-' ? 1 : 0;
  if (first == value.size() || ((value[first] < '0' || value[first] > '9') && value[first] != '.'))
    return std::nullopt;
  Float number{};
  const auto [rest, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc{} || rest != value.data() + value.size() || !std::isfinite(number))
    return std::nullopt;
  return number;
}

bool isAscii(std::wstring_view text) {
  std::uint32_t all = 0;
  for (const wchar_t c : text) all |= static_cast<std::uint32_t>(c);
  return all < 0x80;
}

bool isLineBreak(wchar_t c) { return c == L'\r' || c == L'\n'; }

}  // namespace

bool isAscii(std::string_view bytes) {
  const char* p = bytes.data();
  const char* const end = p + bytes.size();
  std::uint64_t all = 0;
  for (; end - p >= 8; p += 8) all |= loadWord(p);
  for (; p != end; ++p) all |= static_cast<unsigned char>(*p);
  return (all & kHighs) == 0;
}

bool isValidUtf8(std::string_view bytes) {
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = p + bytes.size();
  while (p != end) {
    const std::size_t length = sequenceLength(p, end);
    if (length == 0) return false;
    p += length;
  }
  return true;
}

Encoding detectEncoding(std::string_view bytes) {
  if (isAscii(bytes)) return Encoding::Ascii;
  return isValidUtf8(bytes) ? Encoding::Utf8 : Encoding::Ansi;
}

std::wstring widen(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

std::optional<bool> parseFlag(std::string_view value) {
  if (value == "1") return true;
  if (value == "0") return false;
  if (equalsIgnoringCase(value, "true")) return true;
  if (equalsIgnoringCase(value, "false")) return false;
  const std::optional<double> number = parseDecimal<double>(value);
  if (!number) return std::nullopt;
  return *number != 0.0;
}

std::optional<int> parseInteger(std::string_view value) {
  int number = 0;
  if (parseShortInteger(value, number)) return number;
  const std::optional<double> decimal = parseDecimal<double>(value);
  if (!decimal || *decimal >= 2147483647.5 || *decimal < -2147483648.5) return std::nullopt;
  return roundHalfToEven(*decimal);
}

std::optional<float> parseSingle(std::string_view value) {
  int whole = 0;
  if (value.size() <= 7 && parseShortInteger(value, whole)) return static_cast<float>(whole);
  const std::optional<float> number = parseDecimal<float>(value);
  if (!number || std::fabs(*number) > kMaxTwips) return std::nullopt;
  return number;
}

LineReader::LineReader(std::string_view bytes, TextCodec& codec)
    : codec_(codec),
      at_(bytes.data()),
      end_(bytes.data() + bytes.size()),
      encoding_(detectEncoding(bytes)) {
  if (encoding_ == Encoding::Utf8 && bytes.starts_with("\xEF\xBB\xBF")) at_ += 3;
}

bool LineReader::decode(std::string_view bytes, std::wstring& text) const {
  if (encoding_ == Encoding::Ascii || isAscii(bytes)) {
    assignAscii(text, bytes);
    return true;
  }
  if (encoding_ == Encoding::Utf8) {
    text = codec_.fromUtf8(bytes);
    return true;
  }
  text = codec_.fromAnsi(bytes);
  return text.find(L'\xFFFD') == std::wstring::npos;
}

void LineWriter::integer(int value) {
  std::array<char, 16> buffer{};
  char* first = buffer.data();
  if (value >= 0) *first++ = ' ';
  char* const last = std::to_chars(first, buffer.data() + buffer.size(), value).ptr;
  line({buffer.data(), static_cast<std::size_t>(last - buffer.data())});
}

void LineWriter::single(float value) {
  if (std::isnan(value)) value = 0;
  value = std::clamp(value, -kMaxTwips, kMaxTwips);
  const int whole = static_cast<int>(value);
  if (static_cast<float>(whole) == value) return integer(whole);
  std::array<char, 80> buffer{};
  char* first = buffer.data();
  if (value >= 0) *first++ = ' ';
  char* const last =
      std::to_chars(first, buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
  line({buffer.data(), static_cast<std::size_t>(last - buffer.data())});
}

void LineWriter::wholeTwips(float value) {
  integer(roundHalfToEven(static_cast<double>(std::clamp(value, -kMaxTwips, kMaxTwips))));
}

void LineWriter::text(std::wstring_view value) {
  if (std::any_of(value.begin(), value.end(), isLineBreak)) {
    std::wstring oneLine(value);
    std::replace_if(oneLine.begin(), oneLine.end(), isLineBreak, L' ');
    encode(trimBlanks(std::wstring_view(oneLine)));
  } else {
    encode(trimBlanks(value));
  }
  bytes_.append("\r\n", 2);
}

void LineWriter::lines(std::wstring_view value, std::string_view endMarker) {
  if (value.empty()) return;
  const std::wstring marker = widen(endMarker);
  for (;;) {
    const std::size_t lineEnd = value.find_first_of(L"\r\n");
    const std::wstring_view one = value.substr(0, lineEnd);
    encode(one);
    // Only the exact marker ends the lines, so one blank is enough, and a line
    // that has it already needs no more.
    bytes_.append(one == marker ? " \r\n" : "\r\n");
    if (lineEnd == std::wstring_view::npos) return;
    value.remove_prefix(value.substr(lineEnd, 2) == L"\r\n" ? lineEnd + 2 : lineEnd + 1);
  }
}

void LineWriter::encode(std::wstring_view value) {
  if (isAscii(value)) {
    const std::size_t size = bytes_.size();
    bytes_.resize(size + value.size());
    for (std::size_t i = 0; i < value.size(); ++i) bytes_[size + i] = static_cast<char>(value[i]);
    return;
  }
  sawNonAscii_ = true;
  if (encoding_ == Encoding::Utf8) {
    const std::string utf8 = codec_.toUtf8(value);
    bytes_.append(isValidUtf8(utf8) ? utf8 : repairUtf8(utf8));
    return;
  }
  if (textDidNotFit_) return;  // The file is rendered again anyway.
  if (const std::optional<std::string> ansi = codec_.toAnsi(value))
    bytes_.append(*ansi);
  else
    textDidNotFit_ = true;
}

}  // namespace varnowick
