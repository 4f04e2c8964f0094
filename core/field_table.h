// Rows that tie a key line of the files to a member of a record. A reader and a
// writer walk the same rows, so that adding a row is the whole change. Knows
// nothing of any particular record.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "core/line_format.h"
#include "core/load_report.h"
#include "core/units.h"

namespace varnowick {

enum class ValueKind {
  Flag,           // bool as 1 or 0
  Word,           // bool as True or False; 1 and 0 are read as well
  Integer,        // int
  ShortInteger,   // int within 16 bits
  Single,         // float
  Position,       // Twips, with its fraction
  WholePosition,  // Twips, as a whole number
  Extent,         // as Position, but never negative
  WholeExtent,    // as WholePosition, but never negative
  Colour,         // Colour, or an int that holds one
  Text,           // one line
  Note,           // lines between the key and kNoteEnd
  Constant,       // written for older readers; what is read is not used
};

inline constexpr std::string_view kNoteEnd = "[END Note]";

// A pointer to the member of which ValueKind tells the type.
template <class Record>
using MemberOf = void* (*)(Record&);

template <class Record>
struct Field {
  std::string_view key;
  ValueKind kind = ValueKind::Constant;
  MemberOf<Record> member = nullptr;
  std::string_view constant;  // value of a Constant
  void (*copy)(Record& to, const Record& from) = nullptr;
  bool (*same)(const Record& a, const Record& b) = nullptr;

  // One accessor serves both directions; a writer only looks.
  const void* memberOf(const Record& record) const { return member(const_cast<Record&>(record)); }
};

namespace detail {
template <class Class, class Member>
Class classOf(Member Class::*);
template <auto First>
using RecordOf = decltype(classOf(First));

template <class Member>
constexpr ValueKind usualKind() {
  if constexpr (std::is_same_v<Member, bool>) return ValueKind::Flag;
  if constexpr (std::is_same_v<Member, int>) return ValueKind::Integer;
  if constexpr (std::is_same_v<Member, float>) return ValueKind::Single;
  if constexpr (std::is_same_v<Member, Twips>) return ValueKind::Position;
  if constexpr (std::is_same_v<Member, Colour>) return ValueKind::Colour;
  return ValueKind::Text;
}

template <class Object, class Member, class... Rest>
constexpr auto& walk(Object& object, Member member, Rest... rest) {
  if constexpr (sizeof...(rest) == 0)
    return object.*member;
  else
    return walk(object.*member, rest...);
}

template <auto First, auto... Rest>
void* memberOf(RecordOf<First>& record) {
  return &walk(record, First, Rest...);
}
template <auto First, auto... Rest>
void copyMember(RecordOf<First>& to, const RecordOf<First>& from) {
  walk(to, First, Rest...) = walk(from, First, Rest...);
}
template <auto First, auto... Rest>
bool sameMember(const RecordOf<First>& a, const RecordOf<First>& b) {
  return walk(a, First, Rest...) == walk(b, First, Rest...);
}
}  // namespace detail

// A row for the member reached by the path, of the kind usual for its type.
template <auto First, auto... Rest>
constexpr auto field(std::string_view key, ValueKind kind) {
  return Field<detail::RecordOf<First>>{key,
                                        kind,
                                        &detail::memberOf<First, Rest...>,
                                        {},
                                        &detail::copyMember<First, Rest...>,
                                        &detail::sameMember<First, Rest...>};
}
template <auto First, auto... Rest>
constexpr auto field(std::string_view key) {
  using Record = detail::RecordOf<First>;
  using Member =
      std::remove_reference_t<decltype(detail::walk(std::declval<Record&>(), First, Rest...))>;
  return field<First, Rest...>(key, detail::usualKind<Member>());
}
template <class Record>
constexpr Field<Record> constantField(std::string_view key, std::string_view value) {
  return {key, ValueKind::Constant, nullptr, value, nullptr, nullptr};
}

// One file being read: its lines and the report that collects what went wrong.
struct FileReading {
  LineReader lines;
  const std::wstring& path;
  LoadReport& report;
  bool noNoteEndAhead = false;  // found out once, so that reading stays linear

  void problem(std::wstring what) { report.add(path, lines.lineNumber(), std::move(what)); }
};

// Converts a trimmed value into the member. False when that is impossible; the
// member then keeps its value, except that text is taken with U+FFFD in place of
// what stands for no character.
bool readMember(ValueKind kind, void* member, std::string_view value, const LineReader& lines);
void writeMember(ValueKind kind, const void* member, LineWriter& out);
// The lines up to kNoteEnd, joined by CR LF.
void readNote(FileReading& in, std::wstring& note);

// Reads the value that follows a key line. A missing value, at the end of the
// file, and a bad one are reported. False only when it is missing.
template <class Record>
bool readField(const Field<Record>& row, Record& record, FileReading& in) {
  if (row.kind == ValueKind::Note) {
    readNote(in, *static_cast<std::wstring*>(row.member(record)));
    return true;
  }
  std::string_view value;
  if (!in.lines.next(value)) {
    in.problem(L"The file ends where the value of " + widen(row.key) + L" should stand.");
    return false;
  }
  if (row.kind == ValueKind::Constant) return true;
  if (!readMember(row.kind, row.member(record), trimBlanks(value), in.lines))
    in.problem(L"The value of " + widen(row.key) + L" cannot be read.");
  return true;
}

template <class Record>
void writeField(const Field<Record>& row, const Record& record, LineWriter& out) {
  out.line(row.key);
  if (row.kind == ValueKind::Constant) {
    out.line(row.constant);
  } else if (row.kind == ValueKind::Note) {
    out.lines(*static_cast<const std::wstring*>(row.memberOf(record)), kNoteEnd);
    out.line(kNoteEnd);
  } else {
    writeMember(row.kind, row.memberOf(record), out);
  }
}

// The row with this key, or the table's size. The search starts at the expected
// row, because files are nearly always in order.
template <class Table, class KeyOf>
std::size_t findRow(const Table& table, std::string_view key, std::size_t expected, KeyOf keyOf) {
  const std::size_t size = std::size(table);
  if (key.size() < 2 || key.front() != '[') return size;
  for (std::size_t step = 0; step < size; ++step) {
    const std::size_t row = expected + step < size ? expected + step : expected + step - size;
    if (keyOf(table[row]) == key) return row;
  }
  return size;
}

}  // namespace varnowick
