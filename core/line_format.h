// The line grammar that the settings file, the recovery copy and the container
// files share: lines of bytes, values in text form, and the choice of encoding.
// Knows nothing of keys and records, and touches no file itself.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "core/units.h"
#include "platform/text_codec.h"

namespace varnowick {

// What the bytes of one whole file stand for.
enum class Encoding { Ascii, Ansi, Utf8 };

bool isAscii(std::string_view bytes);
// Strict: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes);
// UTF-8 when the bytes are valid UTF-8 with at least one multi-byte sequence.
Encoding detectEncoding(std::string_view bytes);

// Without the blanks at both ends.
template <class Char>
std::basic_string_view<Char> trimBlanks(std::basic_string_view<Char> text) {
  while (!text.empty() && text.front() == Char{' '}) text.remove_prefix(1);
  while (!text.empty() && text.back() == Char{' '}) text.remove_suffix(1);
  return text;
}
// For messages and names that are known to be ASCII.
std::wstring widen(std::string_view ascii);

// Positions and sizes outside this range are not taken from a file, nor written.
inline constexpr float kMaxTwips = 9'999'999.0F;

// Each takes a trimmed value and gives nothing when it cannot be converted.
std::optional<bool> parseFlag(std::string_view value);
// Fractions are rounded half to even.
std::optional<int> parseInteger(std::string_view value);
std::optional<float> parseSingle(std::string_view value);  // within +-kMaxTwips

// The usual case: up to 9 digits with or without a minus sign.
inline bool parseShortInteger(std::string_view value, int& number) {
  const bool negative = !value.empty() && value.front() == '-';
  if (negative) value.remove_prefix(1);
  if (value.empty() || value.size() > 9) return false;
  int sum = 0;
  for (const char c : value) {
    if (c < '0' || c > '9') return false;
    sum = sum * 10 + (c - '0');
  }
  number = negative ? -sum : sum;
  return true;
}

// The first CR or LF, or end.
inline const char* findLineEnd(const char* p, const char* end) {
  // As many bytes at a time as the machine calculates with. Of the bytes below
  // the one after CR the lowest is marked for certain, and tabs are as rare.
  using Word = std::size_t;
  constexpr Word kOnes = static_cast<Word>(-1) / 0xFF;
  static_assert(std::endian::native == std::endian::little);
  for (;;) {
    for (; end - p >= static_cast<std::ptrdiff_t>(sizeof(Word)); p += sizeof(Word)) {
      Word word;
      std::memcpy(&word, p, sizeof word);
      if (const Word low = (word - kOnes * ('\r' + 1)) & ~word & (kOnes << 7); low != 0) {
        p += std::countr_zero(low) / 8;
        break;
      }
    }
    if (p == end || *p == '\r' || *p == '\n') return p;
    ++p;
  }
}

// Each byte becomes one character.
inline void assignAscii(std::wstring& text, std::string_view ascii) {
  const auto* const first = reinterpret_cast<const unsigned char*>(ascii.data());
  text = std::wstring(first, first + ascii.size());
}

// Splits bytes into lines ended by CR LF, a lone LF or a lone CR. In every ANSI
// code page of the platform these bytes stand for nothing else.
class LineReader {
 public:
  // The bytes must outlive the reader. A leading UTF-8 byte-order mark is
  // skipped.
  LineReader(std::string_view bytes, TextCodec& codec);

  // False at the end. The line is given without its end and is not trimmed.
  bool next(std::string_view& line) {
    if (at_ == end_) return false;
    const char* const lineEnd = findLineEnd(at_, end_);
    line = {at_, static_cast<std::size_t>(lineEnd - at_)};
    at_ = lineEnd;
    if (at_ != end_ && *at_++ == '\r' && at_ != end_ && *at_ == '\n') ++at_;
    ++lineNumber_;
    return true;
  }
  // Consumes the next line if it is exactly this, ended by CR LF: the usual case
  // of a key that is expected next, told without looking for the line's end.
  bool nextIs(std::string_view expected) {
    const std::size_t size = expected.size();
    if (static_cast<std::size_t>(end_ - at_) < size + 2 || at_[size] != '\r' ||
        at_[size + 1] != '\n' || std::memcmp(at_, expected.data(), size) != 0)
      return false;
    at_ += size + 2;
    ++lineNumber_;
    return true;
  }
  bool atEnd() const { return at_ == end_; }
  // The number of the line read last, from 1; 0 before the first.
  std::size_t lineNumber() const { return lineNumber_; }

  struct Mark {
    const char* at;
    std::size_t lineNumber;
  };
  Mark mark() const { return {at_, lineNumber_}; }
  void goBackTo(Mark mark) { at_ = mark.at, lineNumber_ = mark.lineNumber; }

  // Decodes a part of a line into text. False when some bytes stand for no
  // character; they are then replaced by U+FFFD.
  bool decode(std::string_view bytes, std::wstring& text) const;

  // For readers that know what comes: the bytes not read yet, and the step over
  // some of them, which must be whole lines.
  std::string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
  void skip(std::size_t bytes, std::size_t lines) { at_ += bytes, lineNumber_ += lines; }
  // Whether all bytes of the file are ASCII.
  bool ascii() const { return encoding_ == Encoding::Ascii; }

 private:
  TextCodec& codec_;
  const char* at_;
  const char* end_;
  std::size_t lineNumber_ = 0;
  Encoding encoding_;
};

// Builds the bytes of one file. Use renderFile, which chooses the encoding.
class LineWriter {
 public:
  LineWriter(TextCodec& codec, Encoding encoding) : codec_(codec), encoding_(encoding) {}

  // The argument is ASCII without line breaks.
  void line(std::string_view ascii) { bytes_.append(ascii).append("\r\n", 2); }
  void flag(bool value) { bytes_.append(value ? "1\r\n" : "0\r\n", 3); }
  void word(bool value) { line(value ? "True" : "False"); }
  void integer(int value);
  // Kept within +-kMaxTwips; what is no number becomes 0.
  void single(float value);
  void wholeTwips(float value);
  // One line: line breaks become blanks, blanks at both ends are dropped.
  void text(std::wstring_view value);
  // As many lines as the text has, as they stand; none for an empty text.
  // A line equal to endMarker gets one trailing blank.
  void lines(std::wstring_view value, std::string_view endMarker);

  void reserve(std::size_t bytes) { bytes_.reserve(bytes); }
  bool textDidNotFit() const { return textDidNotFit_; }
  bool sawNonAscii() const { return sawNonAscii_; }
  std::string& bytes() { return bytes_; }

 private:
  void encode(std::wstring_view value);

  TextCodec& codec_;
  Encoding encoding_;
  std::string bytes_;
  bool textDidNotFit_ = false;
  bool sawNonAscii_ = false;
};

// Renders a file with emit(LineWriter&), which may be called twice: the file is
// written in the ANSI code page unless that cannot hold its text or its bytes
// would then be taken for UTF-8; else it is UTF-8 as a whole.
template <class Emit>
std::string renderFile(TextCodec& codec, std::size_t sizeHint, Emit&& emit) {
  LineWriter ansi(codec, Encoding::Ansi);
  ansi.reserve(sizeHint);
  emit(ansi);
  const bool misread = ansi.sawNonAscii() && detectEncoding(ansi.bytes()) == Encoding::Utf8;
  if (!ansi.textDidNotFit() && !misread) return std::move(ansi.bytes());
  LineWriter utf8(codec, Encoding::Utf8);
  utf8.reserve(ansi.bytes().size() + sizeHint / 8);
  emit(utf8);
  return std::move(utf8.bytes());
}

}  // namespace varnowick
