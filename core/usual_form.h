// The short cut past the line grammar: pairs that stand exactly as this program
// writes them, which is nearly all there is in a large desktop. Whatever looks
// otherwise in the least is left to the reader of lines, so that nothing here
// decides what a file means; it only decides it sooner.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "core/field_table.h"
#include "core/units.h"

namespace varnowick::usual {

// Two words that may overlap: compilers make a call of comparing 9 to 15 bytes.
[[gnu::always_inline]] inline bool startsWith(const char* at, std::string_view expected) {
  const std::size_t size = expected.size();
  const auto word = [](const char* p) {
    std::uint64_t value;
    std::memcpy(&value, p, sizeof value);
    return value;
  };
  if (size < 8 || size > 16) return std::memcmp(at, expected.data(), size) == 0;
  return word(at) == word(expected.data()) &&
         word(at + size - 8) == word(expected.data() + size - 8);
}

// Each takes the bytes from at to end, and gives where the next line begins, or
// nullptr when the form is not the usual one. The target may have changed then.

[[gnu::always_inline]] inline const char* line(const char* at, const char* end,
                                               std::string_view expected) {
  const std::size_t size = expected.size();
  if (static_cast<std::size_t>(end - at) < size + 2 || at[size] != '\r' || at[size + 1] != '\n' ||
      !startsWith(at, expected))
    return nullptr;
  return at + size + 2;
}

// At most 7 digits, which an int and a float hold exactly, and all kinds allow
// but the one of 16 bits.
[[gnu::always_inline]] inline const char* wholeNumber(const char* at, const char* end,
                                                      std::size_t digits, int& number) {
  constexpr std::ptrdiff_t kLongest = 1 + 1 + 7 + 2;  // blank, sign, digits, end of line
  if (end - at < kLongest) return nullptr;
  at += *at == ' ' ? 1 : 0;
  const bool negative = *at == '-';
  at += negative ? 1 : 0;
  const char* const first = at;
  int sum = 0;
  for (; *at >= '0' && *at <= '9'; ++at) {
    if (static_cast<std::size_t>(at - first) == digits) return nullptr;
    sum = sum * 10 + (*at - '0');
  }
  if (at == first || at[0] != '\r' || at[1] != '\n') return nullptr;
  number = negative ? -sum : sum;
  return at + 2;
}

[[gnu::always_inline]] inline const char* flag(const char* at, const char* end, bool& value) {
  if (end - at < 3 || (*at != '0' && *at != '1') || at[1] != '\r' || at[2] != '\n') return nullptr;
  value = *at == '1';
  return at + 3;
}

[[gnu::always_inline]] inline const char* word(const char* at, const char* end, bool& value) {
  if (const char* next = line(at, end, "False")) {
    value = false;
    return next;
  }
  if (const char* next = line(at, end, "True")) {
    value = true;
    return next;
  }
  return flag(at, end, value);
}

// Out of line, or the reader of a record grows too large for the processor's
// cache of decoded instructions; ascii: all bytes of the file are.
[[gnu::noinline]] inline const char* text(const char* at, const char* end, bool ascii,
                                          std::wstring& value) {
  const char* const lineEnd = findLineEnd(at, end);
  if (end - lineEnd < 2 || lineEnd[0] != '\r' || lineEnd[1] != '\n') return nullptr;
  const std::string_view bytes(at, static_cast<std::size_t>(lineEnd - at));
  if (bytes.empty()) {
    value.clear();
    return lineEnd + 2;
  }
  if (bytes.front() == ' ' || bytes.back() == ' ' || (!ascii && !isAscii(bytes))) return nullptr;
  assignAscii(value, bytes);
  return lineEnd + 2;
}

template <class Record>
[[gnu::always_inline]] inline const char* value(const Field<Record>& row, Record& record,
                                                const char* at, const char* end, bool ascii) {
  switch (row.kind) {
    case ValueKind::Flag:
      return flag(at, end, *static_cast<bool*>(row.member(record)));
    case ValueKind::Word:
      return word(at, end, *static_cast<bool*>(row.member(record)));
    case ValueKind::Integer:
      return wholeNumber(at, end, 7, *static_cast<int*>(row.member(record)));
    case ValueKind::ShortInteger:
      return wholeNumber(at, end, 4, *static_cast<int*>(row.member(record)));
    case ValueKind::Single:
    case ValueKind::Position: {
      int whole = 0;
      const char* const next = wholeNumber(at, end, 7, whole);
      float& target = row.kind == ValueKind::Position
                          ? static_cast<Twips*>(row.member(record))->value
                          : *static_cast<float*>(row.member(record));
      if (next != nullptr) target = static_cast<float>(whole);
      return next;
    }
    case ValueKind::Text:
      return text(at, end, ascii, *static_cast<std::wstring*>(row.member(record)));
    case ValueKind::Constant:
      return line(at, end, row.constant);
    default:
      return nullptr;
  }
}

// A key line with its value. For rows that are known at compile time, of which
// little is left then.
template <class Record>
[[gnu::always_inline]] inline const char* pair(const Field<Record>& row, Record& record,
                                               const char* at, const char* end, bool ascii) {
  const char* const next = line(at, end, row.key);
  return next == nullptr ? nullptr : value(row, record, next, end, ascii);
}

}  // namespace varnowick::usual
